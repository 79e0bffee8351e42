#pragma once

#include "hlx/IController.h"
#include "hlx/TSharedPtr.h"

class QObject;
class QString;

namespace hlx::cam::ui
{

/// Builds the root model of a camera family for a controller. Returns false, and leaves `model` and `qml` alone, if the
/// controller belongs to another family.
using ModelCreator
    = bool (*)(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model, QString &qml);

/// Knows the camera families of all loaded plug-ins. GUI thread only.
class IControllerModelFactory
{
public:
    IControllerModelFactory() = default;
    IControllerModelFactory(const IControllerModelFactory &) = delete;
    IControllerModelFactory &operator=(const IControllerModelFactory &) = delete;

    /// Asks the creators in turn, in the order of their registration, until one takes the controller.
    virtual bool CreateModel(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model,
                             QString &qml)
        = 0;
    virtual int CreatorCount() const = 0;
    /// A plug-in's creators must be gone before its library is unloaded.
    virtual void UnregisterModelCreator(ModelCreator creator) = 0;
    /// Keeps the creator. One that is known already is not kept twice.
    virtual void RegisterModelCreator(ModelCreator creator) = 0;

    // Stands behind the operations above: their places in the table of virtual functions are part of the interface.
    virtual ~IControllerModelFactory();
};

/// The one factory of the process.
IControllerModelFactory *controllerModelFactory();

} // namespace hlx::cam::ui
