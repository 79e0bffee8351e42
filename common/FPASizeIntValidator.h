#pragma once

#include <QValidator>

/// Accepts a window's width or height in pixels: a decimal number between two limits that is a multiple of 4. GUI
/// thread only.
class FPASizeIntValidator : public QValidator
{
    Q_OBJECT
    Q_PROPERTY(int minSize READ minSize WRITE setMinSize NOTIFY minSizeChanged FINAL)
    Q_PROPERTY(int maxSize READ maxSize WRITE setMaxSize NOTIFY maxSizeChanged FINAL)
    Q_PROPERTY(
        int requiredIncrement READ requiredIncrement WRITE setRequiredIncrement NOTIFY requiredIncrementChanged FINAL)

public:
    explicit FPASizeIntValidator(QObject *parent = nullptr);

    int minSize() const { return m_minSize; }
    void setMinSize(int size);

    int maxSize() const { return m_maxSize; }
    void setMaxSize(int size);

    /// Kept for the page; the accepted numbers are multiples of 4 whatever it is.
    int requiredIncrement() const { return m_requiredIncrement; }
    void setRequiredIncrement(int increment);

    /// A number outside the limits is invalid on either side; one inside that is no multiple of 4 is intermediate.
    State validate(QString &input, int &pos) const override;

signals:
    void minSizeChanged();
    void maxSizeChanged();
    void requiredIncrementChanged();

private:
    int m_minSize = 0;
    int m_maxSize = 0;
    int m_requiredIncrement = 0;
};
