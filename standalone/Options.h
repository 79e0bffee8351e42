#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

/// What the command line asks for.
struct Options {
    enum class Mode { Interactive, Answer, ListProfiles, Screenshots, SelfTest, DumpInterface };

    /// Reads the arguments, the program's own name first. Throws BadInput.
    static Options parse(const QStringList &arguments);

    Mode mode = Mode::Interactive;
    QString answer; ///< Mode Answer: what to print instead of running.
    QString plugin; ///< The plug-in's file.
    QString profile; ///< The first camera: the name of a profile, or a file.
    QString storage; ///< Where the cameras keep their files; empty: in the user's application data.
    QString screenshots;
    bool connectAtStart = false;
    bool otherClient = false; ///< Lines of the standard input change the camera behind the operator's back.
    bool asHost = false; ///< The page as in a host application: without a standaloneModel.
    int latency = 0; ///< Milliseconds that each call to the camera takes longer.
    double failRate = 0; ///< The probability with which each call to the camera fails.
    uint32_t seed = 1; ///< Starts the generator behind failRate.
};
