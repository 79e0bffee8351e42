#pragma once

#include <QString>

#include <cstdint>
#include <span>

#include "hlx/CBadPixelList.h"
#include "hlx/CFile.h"
#include "hlx/CString.h"

/// Writes lists of bad pixels of the camera into a local folder, for people to read and look at: for each list the file
/// of the camera, a text and a picture, and one summary with the texts of all lists. Existing files are replaced. The
/// transfers block. GUI thread only, because of the pixmap.
///
/// The lines of a text end with CR LF. It has the size of the image, the number of pixels, and a line for each pixel
/// with its coordinates. The picture is black with white marks.
class BadPixelExport
{
public:
    static constexpr int factoryList = -1; ///< Stands for the factory's list among numbers of presets.

    BadPixelExport(uint64_t handle, const QString &folder);

    /// Exports the lists of presets, which the camera makes from the corrections in use, and of the factory. Ends at
    /// the first list that fails; what was written by then stays. Writes nothing if the summary cannot be opened.
    void run(std::span<const int> lists);

private:
    /// Returns false if the list fails.
    bool exportList(int list);
    /// Transfers the file of the list from the camera.
    bool download(int list, const hlx::CString &localFile) const;
    void writeText(const hlx::cam::zvt::CBadPixelList &pixels, const hlx::CString &path);
    static bool savePicture(const hlx::cam::zvt::CBadPixelList &pixels, const hlx::CString &path);

    hlx::CString localPath(const hlx::CString &name) const;

    const uint64_t m_handle;
    const hlx::CString m_folder;
    hlx::CFile m_summary;
};
