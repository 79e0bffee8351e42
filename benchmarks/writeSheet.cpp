#include "benchmarks/writeSheet.h"

#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>

int writeSheet(int argc, char *argv[], const char *program, QImage (*draw)())
{
    const QTemporaryDir home;
    qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", program);
        return 2;
    }
    if (!draw().save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "%s: %s cannot be written\n", program, argv[1]);
        return 1;
    }
    std::printf("%s\n", argv[1]);
    return 0;
}
