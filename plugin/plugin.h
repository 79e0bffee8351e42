#pragma once

#include <QString>

#include "hlx/IController.h"
#include "hlx/TSharedPtr.h"

class QObject;

// The exports of the plug-in. All other symbols of the library are hidden.

/// The entry point: initialises the resources and registers the model creator with the host's factory and the types
/// with QML. The host calls it once after loading, on the GUI thread. Returns 1.
extern "C" Q_DECL_EXPORT int hlxInitPlugin();

/// Builds the root model of a zvt camera: sets `model` to a new ZvtCameraModel with this parent and `qml` to the path
/// of the main page below the root of the resources, and returns true. Returns false and changes neither for a null
/// controller and for a camera of another family. GUI thread only.
Q_DECL_EXPORT bool CreateModelForController(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent,
                                            QObject *&model, QString &qml);

/// Initialises the library's compiled-in resources. GUI thread only.
Q_DECL_EXPORT void initResources();
