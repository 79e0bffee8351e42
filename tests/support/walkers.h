#pragma once

#include "tests/support/CameraRig.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

// Walkers: tests that apply to every model. They use a model only through its meta-object and the calls that reach the
// camera. A walker reports by QFAIL; call it as the last statement of a test function.

/// The functions with which a walker makes the model under test and starts the read under test.
struct ModelUnderTest {
    /// Makes a root without a parent, for a controller that may be null.
    std::function<QObject *(hlx::TSharedPtr<hlx::cam::IZVTController>)> makeRoot;
    /// Makes a model that is a child of the root.
    std::function<QObject *(QObject *root)> makeModel;
    /// Starts the read, at each call; by default the model's refresh().
    std::function<void(QObject *model)> read = [](QObject *model) { QMetaObject::invokeMethod(model, "refresh"); };
    /// Called before the model is made, for instance to set values that differ from those of an unread model.
    std::function<void(CameraRig &rig)> prepare = [](CameraRig &) {};
    QString profile = QStringLiteral("everything");
    /// Properties that are not read from the camera.
    QStringList ownState{QStringLiteral("visible")};
};

/// The effects of a failing call that does not leave exactly one value as it was.
struct ReadException {
    QStringList affected; ///< All properties that differ from those of a read without a failure.
    const char *reason; ///< The justification.
    QStringList reset = {}; ///< Those of them that do not stay as they were, but change to the value of an unread
                            ///< model or of another source.
};

/// Keys are the names of calls, or "name#2" for the second call of that name in one read.
using ReadExceptions = QMap<QString, ReadException>;

/// Lets each call of a read fail once. In a fresh model exactly the values that the call reads must be missing, each
/// call must have a value of its own, and all other values must be published. In a model that has read everything
/// before, the values of the call must stay as they were, without a signal.
void walkFailingReads(const ModelUnderTest &model, const ReadExceptions &exceptions = {});

/// Deletes the model, and in a second pass the root, while each call of the read is held. The deletion must not wait.
void walkHeldDeletion(const ModelUnderTest &model);

/// Starts a second read while one is held. It must emit nothing, call nothing and not be queued.
void walkSecondRefresh(const ModelUnderTest &model);

/// Reads from a disconnected camera, and without a controller. The read must end with the flags as after every read.
/// Only the properties in `published` may change or be signalled.
void walkNoCamera(const ModelUnderTest &model, const QStringList &published = {});

/// Writes random values to the writable properties, reads, connects, disconnects and deletes the model, on a camera
/// that fails at random. Nothing may crash. In the end, on a sound camera, a read must bring the values of a fresh
/// model.
void walkRandomOperator(const ModelUnderTest &model, uint32_t seed, int steps = 300);
