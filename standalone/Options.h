#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

/// The options of the command line.
struct Options {
    enum class Mode { Interactive, Answer, ListProfiles, Screenshots, SelfTest, DumpInterface };

    /// Reads the arguments, the program's own name first. Throws BadInput.
    static Options parse(const QStringList &arguments);

    Mode mode = Mode::Interactive;
    QString answer; ///< Mode Answer: the text that the program prints instead of running.
    QString plugin; ///< The path of the plug-in.
    QString profile; ///< The first camera: the name of a built-in profile, or the path of a profile's file.
    QString storage; ///< The folder of the cameras' files; empty: the user's application data.
    QString screenshots;
    QString record; ///< The file into which the calls to the first camera are written; empty: none.
    QString replay; ///< The recording that the first camera repeats, in place of `profile`; empty: none.
    bool connectAtStart = false;
    bool otherClient = false; ///< Lines of the standard input change the camera, as another client of it would.
    bool desk = false; ///< Shows the desk beside the page.
    bool asHost = false; ///< Shows the page as a host application does: without a standaloneModel.
    int latency = 0; ///< Milliseconds added to each call to the camera.
    double failRate = 0; ///< The probability (0 to 1) with which each call to the camera fails.
    uint32_t seed = 1; ///< The seed of the generator that failRate uses.
};
