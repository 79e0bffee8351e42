#pragma once

#include <QTimer>

#include <chrono>

/// The timer of a section that polls the camera each second. It runs exactly while an operator can see the values: the
/// section is expanded, its page is shown with it and the camera is connected. GUI thread only.
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

    /// Whether the page is shown with the header of the section, and the camera is connected.
    void setSectionLive(bool live)
    {
        m_sectionLive = live;
        check();
    }

private:
    void check()
    {
        if (!m_expanded || !m_sectionLive)
            stop();
        else if (!isActive())
            start();
    }

    bool m_expanded = false;
    bool m_sectionLive = false;
};
