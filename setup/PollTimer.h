#pragma once

#include <QTimer>

#include <chrono>

/// The timer of a section that polls the camera each second. It runs exactly while an operator can see the values: the
/// section is expanded, its page is shown and the camera is connected. GUI thread only.
class PollTimer : public QTimer
{
public:
    explicit PollTimer(QObject *parent) : QTimer(parent) { setInterval(std::chrono::seconds(1)); }

    /// Whether the section is expanded.
    void setExpanded(bool expanded)
    {
        m_expanded = expanded;
        check();
    }

    /// Whether the page of the section is shown and the camera is connected.
    void setPageLive(bool live)
    {
        m_pageLive = live;
        check();
    }

private:
    void check()
    {
        if (!m_expanded || !m_pageLive)
            stop();
        else if (!isActive())
            start();
    }

    bool m_expanded = false;
    bool m_pageLive = false;
};
