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

/// The registry of the model creators of all loaded plug-ins. GUI thread only.
class IControllerModelFactory
{
public:
    IControllerModelFactory() = default;
    IControllerModelFactory(const IControllerModelFactory &) = delete;
    IControllerModelFactory &operator=(const IControllerModelFactory &) = delete;

    /// Calls the creators in the order of their registration until one returns true. Returns false, and leaves `model`
    /// and `qml` as they are, if none does.
    virtual bool CreateModel(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model,
                             QString &qml)
        = 0;
    /// The number of registered creators.
    virtual int CreatorCount() const = 0;
    /// Removes a creator. A plug-in must remove its creators before its library is unloaded.
    virtual void UnregisterModelCreator(ModelCreator creator) = 0;
    /// Adds a creator at the end, unless it is registered already.
    virtual void RegisterModelCreator(ModelCreator creator) = 0;

    // Declared last: the places of the operations above in the table of virtual functions are part of the interface.
    virtual ~IControllerModelFactory();
};

/// The only factory of the process; never null.
IControllerModelFactory *controllerModelFactory();

} // namespace hlx::cam::ui
