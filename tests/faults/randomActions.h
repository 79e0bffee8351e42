#pragma once

#include "plugin/ZvtCameraModel.h"
#include "tests/support/CameraRig.h"

#include <QMap>
#include <QObject>
#include <QRandomGenerator>
#include <QString>

#include <memory>

/// A root with the models that were made with it.
struct Models {
    explicit Models(CameraRig &rig);

    std::unique_ptr<ZvtCameraModel> root;
    QMap<QString, QObject *> byPath; ///< By the paths of modelsOf().
};

/// Does something at random: an action of the operator or of another client, a read, or a change of the camera.
void doSomething(Models &models, const Models &otherClient, CameraRig &rig, QRandomGenerator &random);

/// Ends the downloads and waits for their ends.
void endDownloads(const Models &models);

/// Shows every page again and reads every model, and the drive.
void readEverything(const Models &models);
