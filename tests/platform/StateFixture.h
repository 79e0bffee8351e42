#pragma once

#include "platform/emulator/control.h"
#include "platform/emulator/stateFile.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

/// A connected camera with a stopped clock, for tests of its states. Each test class has slots that call init() and
/// cleanup().
class StateFixture : public Test
{
protected:
    void init()
    {
        Test::init();
        emulator::Clock::manual();
        m_folder = std::make_unique<QTemporaryDir>();
        switchOn();
    }

    void cleanup()
    {
        m_camera.reset();
        m_folder.reset();
        emulator::Clock::automatic();
    }

    /// Switches the present camera off, and makes and connects a camera with the same folder.
    void switchOn(const QString &profile = QStringLiteral("everything"))
    {
        m_camera.reset();
        m_camera = emulator::Camera::create(profile, m_folder->path());
        m_camera->connect();
        m_handle = m_camera->handle();
    }

    bool set(const char *name, const QVariant &value)
    {
        return m_camera->otherClient().set(QLatin1String(name), value);
    }

    QString current() const
    {
        char text[200] = "";
        return zvtGetStateName(m_handle, text, sizeof text) == 0 ? QString::fromUtf8(text) : QStringLiteral("failed");
    }

    QStringList names() const
    {
        hlx::TArray<zvtSDirEntry> entries;
        if (zvtListStates(m_handle, &entries) != 0)
            return {QStringLiteral("failed")};
        QStringList all;
        for (const auto &entry : entries)
            all << QString::fromUtf8(entry.name.c_str());
        return all;
    }

    QString stateFile(const QString &name) const { return m_camera->folder() + "/states/" + name + ".qsf"; }

    /// The contents of a state file for this camera, with settings that differ from those of a new camera.
    QByteArray otherState() const
    {
        QJsonObject settings = m_camera->newSettings();
        settings[QStringLiteral("cooler")] = QJsonObject{{QStringLiteral("setpoint"), 91.0}};
        return emulator::toStateFile(m_camera->profile().name(), settings);
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    /// Adds rows with a column "content": file contents that are not a state of a camera "everything".
    static void addUnsoundContents()
    {
        using emulator::toStateFile;
        QTest::addColumn<QByteArray>("content");
        const QString profile = QStringLiteral("everything");
        const QByteArray sound = toStateFile(profile, {{QStringLiteral("cooler"), QJsonObject()}});
        QByteArray body = sound.chopped(32);
        QByteArray flipped = sound;
        flipped[40] = static_cast<char>(flipped[40] ^ 1);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("foreign") << QByteArray("{\"cooler\": {}}");
        QTest::newRow("truncated") << sound.chopped(1);
        QTest::newRow("half") << sound.left(sound.size() / 2);
        QTest::newRow("with a tail") << sound + '\0';
        QTest::newRow("one bit flipped") << flipped;
        QTest::newRow("no checksum") << body;
        QTest::newRow("tail below the checksum") << sealed(body + 'x');
        QTest::newRow("nothing but a checksum") << sealed({});
        QTest::newRow("other camera") << toStateFile(QStringLiteral("te-cooler"), {});
        QTest::newRow("settings of no device") << toStateFile(profile, {{QStringLiteral("cooler"), 77}});
        body[8] = 2;
        QTest::newRow("later version") << sealed(body);
        body[8] = 1;
        body[0] = 'X';
        QTest::newRow("other magic") << sealed(body);
        QTest::newRow("no JSON") << sealed(sound.chopped(32).replace('{', '['));
    }

    /// Returns these contents with a valid checksum.
    static QByteArray sealed(const QByteArray &body)
    {
        return body + QCryptographicHash::hash(body, QCryptographicHash::Sha256);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<emulator::Camera> m_camera;
    uint64_t m_handle = 0;
};
