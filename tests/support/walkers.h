#pragma once

#include "tests/support/CameraRig.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

// Walkers: tests that apply to every model. They use a model only through its meta-object, and check the calls that
// reach the camera. A walker reports a failure by QFAIL, which returns only from the walker: call a walker as the last
// statement of a test function.

/// Describes the model under test: how a walker creates it and starts its read, and with which camera.
struct ModelUnderTest {
    /// Creates a root model without a parent. The controller may be null.
    std::function<QObject *(hlx::TSharedPtr<hlx::cam::IZVTController>)> makeRoot;
    /// Creates the model under test as a child of the root.
    std::function<QObject *(QObject *root)> makeModel;
    /// Starts the read under test. Calls the model's refresh() by default.
    std::function<void(QObject *model)> read = [](QObject *model) { QMetaObject::invokeMethod(model, "refresh"); };
    /// Called before root and model are created, for instance to give the camera values that differ from those of a
    /// model that has not been read.
    std::function<void(CameraRig &rig)> prepare = [](CameraRig &) {};
    QString profile = QStringLiteral("everything"); ///< The name of the camera's profile.
    /// Properties that are not read from the camera. They may differ from those of a fresh model.
    QStringList ownState{QStringLiteral("visible")};
};

/// The expected effects of a failing call that does not follow the rules of walkFailingReads().
struct ReadException {
    QStringList affected; ///< All properties that differ, after the first read, from those of a read without a failure.
    const char *reason; ///< Why the call does not follow the rules.
    QStringList reset = {}; ///< The properties in `affected` that a failure in a later read may change or signal.
};

/// The exceptions by call. A key is the name of a call, or "name#2" for the second call of that name in one read.
using ReadExceptions = QMap<QString, ReadException>;

/// Lets each call of a read fail once. In the first read of a model the call must have at least one value, and no
/// other call may have the same one; its values must stay as before the read, and all other values must be published.
/// In a second read the values of the call must stay as they were, without a signal. `exceptions` are the calls with
/// other effects.
void walkFailingReads(const ModelUnderTest &model, const ReadExceptions &exceptions = {});

/// Holds each call of the read in turn and deletes the model meanwhile, in a second pass the root. The deletion must
/// not wait for the call.
void walkHeldDeletion(const ModelUnderTest &model);

/// Starts a second read while a first one is held. The second one must emit nothing, call nothing and not be queued.
void walkSecondRefresh(const ModelUnderTest &model);

/// Reads from a disconnected camera, and without a controller. After the read `refreshing` must be false and
/// `hasRefreshed` true, if the model has them. Of the other properties only those in `published` may change or be
/// signalled.
void walkNoCamera(const ModelUnderTest &model, const QStringList &published = {});

/// Shows the section of the model twice by its property `visible`. Only the first time may signal, and nothing may be
/// read: the page starts the read of a section.
void walkVisibility(const ModelUnderTest &model);

/// Calls `apply`, an invokable that writes all edited values of the model, after a read. It must write on the GUI
/// thread, and neither read nor signal nor change a value. Without a controller, and without a root, it must not crash.
void walkApply(const ModelUnderTest &model, const char *apply);

/// Writes, in random order, random values to the model's properties, starts reads, advances the clock, connects and
/// disconnects the camera, and replaces the model, while calls fail at random. Nothing may crash. At the end the camera
/// works again, and a read must result in the same values as in a fresh model.
void walkRandomOperator(const ModelUnderTest &model, uint32_t seed, int steps = 300);
