#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include "hlxui/ObjectListModel.h"

class ZvtModelModel;

/// All camera models of the SDK's table, and those that pass the filters. QML creates it. GUI thread only.
class ZvtModelTable : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ObjectListModel *models READ models CONSTANT FINAL)
    Q_PROPERTY(ObjectListModel *filteredModels READ filteredModels NOTIFY filteredModelsChanged FINAL)

    Q_PROPERTY(QString textFilter READ textFilter WRITE setTextFilter NOTIFY textFilterChanged FINAL)
    Q_PROPERTY(int boardTypeFilter READ boardTypeFilter WRITE setBoardTypeFilter NOTIFY boardTypeFilterChanged FINAL)
    Q_PROPERTY(int detectorTypeFilter READ detectorTypeFilter WRITE setDetectorTypeFilter NOTIFY
                   detectorTypeFilterChanged FINAL)
    Q_PROPERTY(
        int readoutTypeFilter READ readoutTypeFilter WRITE setReadoutTypeFilter NOTIFY readoutTypeFilterChanged FINAL)

public:
    explicit ZvtModelTable(QObject *parent = nullptr);
    ~ZvtModelTable() override;

    /// A ZvtModelModel for each row of the table, in its order.
    ObjectListModel *models() const { return m_models; }

    /// The rows of `models` that pass the filters, in the same order.
    ObjectListModel *filteredModels() const { return m_filteredModels; }

    /// Words separated by blanks. A row passes if each word occurs in one of its eight texts, in any case of letters.
    QString textFilter() const { return m_textFilter; }
    void setTextFilter(const QString &text);

    /// The three numbers that a row must have to pass; -1, the first value, means not set. The list is updated only
    /// when none is negative, since a page binds them one after the other. setBoardTypeFilter() ignores a negative
    /// number, and signals also an unchanged one.
    int boardTypeFilter() const { return m_boardTypeFilter; }
    void setBoardTypeFilter(int boardSet);

    int detectorTypeFilter() const { return m_detectorTypeFilter; }
    void setDetectorTypeFilter(int detector);

    int readoutTypeFilter() const { return m_readoutTypeFilter; }
    void setReadoutTypeFilter(int readout);

    /// The row in `filteredModels` of the first model with these five numbers; -1 if there is none.
    Q_INVOKABLE int getIndexBasedOnCameraInfo(int boardType, int cameraType, int cameraSubType, int detectorType,
                                              int roicType) const;

signals:
    void filteredModelsChanged();
    void textFilterChanged();
    void boardTypeFilterChanged();
    void detectorTypeFilterChanged();
    void readoutTypeFilterChanged();

private:
    void emptyFilteredModels();
    void updateFilteredModels();
    void updateIfNumbersComplete();
    bool passes(const ZvtModelModel &row, const QStringList &words) const;
    bool passesNumbers(const ZvtModelModel &row) const;

    ObjectListModel *const m_models;
    ObjectListModel *const m_filteredModels;
    QString m_textFilter;
    int m_boardTypeFilter = -1;
    int m_detectorTypeFilter = -1;
    int m_readoutTypeFilter = -1;
};
