#pragma once

#include <QString>

#include "hlx/IController.h"
#include "hlx/TSharedPtr.h"

class QObject;

// What the plug-in shows to its host. Everything else of the library is hidden.

/// The entry point: initialises the resources, registers the creator with the host's factory and the types with QML.
/// The host calls it once after loading, on the GUI thread. Returns 1.
extern "C" Q_DECL_EXPORT int hlxInitPlugin();

/// Builds the root model of a zvt camera: `model` becomes a ZvtCameraModel with this parent, `qml` the page's path
/// below the resources' root. False, with both untouched, for a null controller and for one of another family. GUI
/// thread only.
Q_DECL_EXPORT bool CreateModelForController(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent,
                                            QObject *&model, QString &qml);

/// Initialises the library's compiled-in resources.
Q_DECL_EXPORT void initResources();
