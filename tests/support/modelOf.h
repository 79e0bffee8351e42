#pragma once

#include "plugin/ZvtCameraModel.h"
#include "tests/support/walkers.h"

/// The description of a model of class M below a ZvtCameraModel, for the walkers. The test must be linked with the
/// models.
template <class M> ModelUnderTest modelOf(const QString &profile = QStringLiteral("everything"))
{
    ModelUnderTest model;
    model.makeRoot = [](hlx::TSharedPtr<hlx::cam::IZVTController> controller) -> QObject * {
        return new ZvtCameraModel(std::move(controller), nullptr);
    };
    model.makeModel = [](QObject *root) -> QObject * { return new M(root); };
    model.profile = profile;
    return model;
}
