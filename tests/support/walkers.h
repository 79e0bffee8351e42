#pragma once

#include "tests/support/CameraRig.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

// Walkers that every model is put through by one line each. They know a model only by its meta-object and by the calls
// that reach the camera, so that they serve every model alike. A walker reports by QFAIL; call it as the last statement
// of a test function.

/// How a walker gets the model that it walks, and how it starts the read in question.
struct ModelUnderTest {
    /// A root on a controller (null for the walk without one), with no parent.
    std::function<QObject *(hlx::TSharedPtr<hlx::cam::IZVTController>)> makeRoot;
    /// A fresh model below the root, as its child.
    std::function<QObject *(QObject *root)> makeModel;
    /// Starts the read, as often as it is called; by default the model's refresh().
    std::function<void(QObject *model)> read = [](QObject *model) { QMetaObject::invokeMethod(model, "refresh"); };
    /// Readies the camera before the model is made, for instance by values that differ from those of an unread model.
    std::function<void(CameraRig &rig)> prepare = [](CameraRig &) {};
    QString profile = QStringLiteral("everything");
    /// Properties that are not read from the camera.
    QStringList ownState{QStringLiteral("visible")};
};

/// What a walk knows of a call whose failure does more, or less, than to leave its own value old.
struct ReadException {
    QStringList affected; ///< All properties that then differ from those of a read without a failure.
    const char *reason; ///< The sentence that justifies it.
    QStringList reset = {}; ///< Those of them that fall back to what an unread model shows, or to another source,
                            ///< instead of staying old.
};

/// Keys are the names of calls, or "name#2" for the second call of that name in one read.
using ReadExceptions = QMap<QString, ReadException>;

/// Each call of a read fails once. In a fresh model exactly the values that the call reads are missing, every call has
/// a value of its own, and all others are published. In a model that has read everything before, they stay as they were
/// and are not signalled.
void walkFailingReads(const ModelUnderTest &model, const ReadExceptions &exceptions = {});

/// The model, and then the root, is deleted with each call of its read held in flight: at once, without a wait.
void walkHeldDeletion(const ModelUnderTest &model);

/// A second read while one is held emits nothing, calls nothing and is not queued.
void walkSecondRefresh(const ModelUnderTest &model);

/// A read without a camera (disconnected, and with no controller at all) ends: the flags as after every read, no value
/// changed and no value's signal emitted but those of `published`.
void walkNoCamera(const ModelUnderTest &model, const QStringList &published = {});

/// Writes random values to the writable properties, reads, connects, disconnects and deletes on a camera that fails at
/// random. Nothing may crash, and at the end, on a sound camera, a read gives what it gives to a fresh model.
void walkRandomOperator(const ModelUnderTest &model, uint32_t seed, int steps = 300);
