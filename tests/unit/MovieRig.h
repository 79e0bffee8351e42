#pragma once

#include "tests/unit/SsdRig.h"

#include "recording/SsdMovieFileInfoModel.h"

#include <cstring>

/// The record of a movie of 320x256 pixels.
inline zvtSSsdMovieInfo movieRecord()
{
    zvtSSsdMovieInfo info{};
    std::strcpy(info.name, "Flight");
    info.number = 17;
    info.width = 320;
    info.height = 257;
    info.numFrames = 60;
    return info;
}

/// The SSD tab of a camera with three movies of 320x256 pixels and a window of 640x512. The answers are scripted.
struct Movies : Ssd {
    Movies()
    {
        gate().script("zvtGetSsdMovieCount", 3U);
        gate().script("zvtGetSsdMovieInfo", QVariant::fromValue(movieRecord()));
        gate().script("zvtGetSsdDriveSpaceTotal", qint64{4096});
        gate().script("zvtGetSsdDriveSpaceFree", qint64{1536});
        gate().script("zvtGetSsdDriveSpaceUsed", qint64{1023});
        gate().script("zvtGetWindow", QVariantList{8, 4, 640, 512});
        gate().script("controller.SetWindow", true);
    }

    /// Lists the movies. Returns the calls of the task.
    QStringList list()
    {
        const size_t since = gate().mark();
        model.loadAndViewFiles();
        CameraRig::settle();
        return calls(since, false);
    }
    SsdMovieFileInfoModel *movie(int row)
    {
        return qobject_cast<SsdMovieFileInfoModel *>(model.fileListModel()->at(row));
    }

    /// Loads a movie of a size. Returns the calls of the GUI thread.
    QStringList load(int width, int height)
    {
        zvtSSsdMovieInfo info = movieRecord();
        info.width = static_cast<uint16_t>(width);
        info.height = static_cast<uint16_t>(height + 1);
        SsdMovieFileInfoModel item(2, info, nullptr);
        return callsOf([&] {
            model.loadMovie(&item);
            CameraRig::settle();
        });
    }
    QStringList windowsSet(const QStringList &calls) { return calls.filter("controller.SetWindow"); }
};

/// The description for walkers of a model whose read starts by `read`.
inline ModelUnderTest moviesModel(const std::function<void(SsdTabModel *model)> &read)
{
    ModelUnderTest model = ssdModel();
    model.prepare = [](CameraRig &rig) {
        scriptRecorder(rig.gate());
        rig.gate().script("zvtGetSsdMovieCount", 1U);
        rig.gate().script("zvtGetSsdMovieInfo", QVariant::fromValue(movieRecord()));
        rig.gate().script("zvtGetWindow", QVariantList{0, 0, 320, 256});
    };
    model.read = [read](QObject *ssd) { read(qobject_cast<SsdTabModel *>(ssd)); };
    return model;
}
