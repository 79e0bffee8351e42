#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>

#include <memory>

class Desk;
class QQmlContext;
class QQmlEngine;
class QQuickItem;
class QQuickWindow;

/// Divides a window between the page, the handle, the desk and the bar of faults: the bar is at the top, the page on
/// the left, the desk on the right. The handle is between the two, or at the right edge while the desk is hidden. The
/// desk and the bar are created when they are first shown. The overlay of the window, in which the page's dialogs are,
/// covers only the page, so that the desk can be used while a dialog is open. GUI thread only.
class DeskSplit : public QObject
{
    Q_OBJECT

public:
    static constexpr QSize LeastPage{640, 480};
    static constexpr int HandleWidth = 8;

    /// The widths of the parts, in device-independent pixels.
    struct Widths {
        int page = 0;
        int desk = 0; ///< 0 while the desk is hidden.
        int leastWindow = 0; ///< The least width of the window.
        int wantedWindow = 0; ///< The window's width with which page and desk have all the width that they want.
    };

    /// Divides `window`. The desk has the width `wanted`, or less if the page would be too narrow. It is never narrower
    /// than DeskSettings::LeastWidth, except that it takes only 280 where page and desk do not fit on the screen.
    static Widths divide(int window, int screen, int wanted, bool shown);

    /// Hidden at first. All arguments must outlive this object.
    DeskSplit(QQuickWindow &window, QQmlEngine &engine, QQuickItem &page, Desk &desk);
    ~DeskSplit() override;

    bool shown() const { return m_shown; }

    /// Shows or hides the desk, and stores that. The window grows as far as the screen allows if the page would be too
    /// narrow. It is as wide as before after the desk is hidden, unless its width has been changed meanwhile.
    void setShown(bool shown);

    /// Gives every part its place in the window.
    void fit();

    /// The desk's item; null before it is first shown.
    QQuickItem *desk() const { return m_deskItem.get(); }

private slots:
    // For signals of QML files.
    void toggle() { setShown(!m_shown); }
    void drag(double x);
    void step(int pixels);
    void storeWidth();
    void followFocus();
    void leaveDesk();

private:
    QQuickItem *overlay() const;
    void fitOverlay();
    std::unique_ptr<QQuickItem> create(const char *file, const char *model);
    void createDesk();
    void showFaults();
    void grow();
    void shrink();
    Widths widths() const;
    void setWantedWidth(int width);

    QQuickWindow &m_window;
    QQmlEngine &m_engine;
    QQuickItem &m_page;
    Desk &m_desk;
    bool m_shown = false;
    int m_wanted;
    int m_widthBefore = 0;
    int m_widthGrown = 0;
    /// The last item outside of handle, desk and bar that had the focus.
    QPointer<QQuickItem> m_pageFocus;
    // The order matters: the items are destroyed before their context.
    std::unique_ptr<QQmlContext> m_context;
    std::unique_ptr<QQuickItem> m_handle;
    std::unique_ptr<QQuickItem> m_deskItem;
    std::unique_ptr<QQuickItem> m_bar;
};
