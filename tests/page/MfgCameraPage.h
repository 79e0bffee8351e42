#pragma once

#include "tests/page/MfgPage.h"

#include <QQmlProperty>

/// The page of a camera that is the second of the two models with its board set, detector and readout circuit.
struct MfgCameraPage : MfgPage {
    explicit MfgCameraPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("speed-moves"))
        : MfgPage(profile, prepare)
    {
    }

    /// The number of models in the table, with and without a row that has been made.
    int rows() const { return item("Models").property("count").toInt(); }
    /// The rows that have been made, by their numbers. Those that the view keeps for later use are left out.
    QMap<int, QQuickItem *> madeRows() const
    {
        QMap<int, QQuickItem *> made;
        for (int number = 0; number < rows(); ++number) {
            QQuickItem *row = nullptr;
            QMetaObject::invokeMethod(&item("Models"), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row),
                                      Q_ARG(int, number));
            if (row != nullptr)
                made.insert(number, row);
        }
        return made;
    }
    /// The models whose rows have been made, from top to bottom.
    QStringList models() const
    {
        QStringList names;
        for (const QQuickItem *row : madeRows())
            names << nameOf(*row);
        return names;
    }
    /// The model in the current row; empty without one.
    QString current() const
    {
        for (const QQuickItem *row : madeRows())
            if (row->property("highlighted").toBool())
                return nameOf(*row);
        return {};
    }
    QString fact(const QString &heading) const
    {
        return QQmlProperty::read(&item(heading), "Accessible.description", qmlContext(&item(heading))).toString();
    }
    QStringList facts() const { return {fact("Board Set"), fact("Detector"), fact("ROIC")}; }
    /// Whether the model is in the current row, and is the one that would be applied.
    bool isCurrent(const QString &model) const { return current() == model && identityOf("model").toString() == model; }
    void search(const QString &text)
    {
        item("Search").forceActiveFocus(Qt::OtherFocusReason);
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        enter(item("Search"), text);
        settle();
    }
    QVariant identityOf(const char *property) const { return identity()->property(property); }
};
