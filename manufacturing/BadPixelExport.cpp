#include "manufacturing/BadPixelExport.h"

#include "common/conversions.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QRect>

#include "hlx/path.h"
#include "zvt/zvtsdk.h"

using hlx::cam::zvt::CBadPixelList;

namespace
{

constexpr auto factoryName = "factory.bpl";
constexpr auto factoryPath = "/flashfs/system/factoryConfig/factory.bpl";

hlx::CString presetName(int preset) { return hlx::CString::FromFormat("ps%d.bpl", preset); }

/// Calls `visit` with the coordinates of each pixel, in the order of the list.
template <class Visit> void forEachPixel(const CBadPixelList &pixels, Visit visit)
{
    for (unsigned i = 0; i < pixels.GetCount(); ++i) {
        uint16_t x = 0;
        uint16_t y = 0;
        pixels.GetAt(i, x, y);
        visit(int{x}, int{y});
    }
}

QImage pictureOf(const CBadPixelList &pixels)
{
    uint16_t width = 0;
    uint16_t height = 0;
    pixels.GetSize(width, height);
    QPixmap picture(width, height);
    if (picture.isNull())
        return {};
    QPainter painter(&picture);
    painter.fillRect(QRect(QPoint(0, 0), QPoint(width - 1, height - 1)), Qt::black);
    painter.setPen(Qt::white);
    // The outline of a rectangle of one pixel covers two by two pixels, so that single bad pixels are easy to see.
    forEachPixel(pixels, [&](int x, int y) { painter.drawRect(QRect(QPoint(x, y), QPoint(x, y))); });
    painter.end();
    return picture.toImage();
}

} // namespace

BadPixelExport::BadPixelExport(uint64_t handle, const QString &folder) : m_handle(handle), m_folder(toCString(folder))
{
}

hlx::CString BadPixelExport::localPath(const hlx::CString &name) const
{
    return hlx::path::MakePath(m_folder, name, '/');
}

void BadPixelExport::run(std::span<const int> lists)
{
    if (!m_summary.Open(localPath("bpl.txt"), hlx::CFile::CreateForWriting))
        return;
    for (const int list : lists)
        if (!exportList(list))
            return;
}

bool BadPixelExport::exportList(int list)
{
    const hlx::CString localFile = localPath(list == factoryList ? factoryName : presetName(list));
    CBadPixelList pixels;
    if (!download(list, localFile) || !pixels.Load(localFile))
        return false;
    if (list == factoryList)
        m_summary.WriteString("**** Factory ****\r\n");
    else
        m_summary.WriteFormattedString("**** Preset %d ****\r\n", list);
    writeText(pixels, localFile + ".txt");
    return savePicture(pixels, localFile + ".png");
}

bool BadPixelExport::download(int list, const hlx::CString &localFile) const
{
    if (list == factoryList)
        return zvtDownloadFileStd(m_handle, factoryPath, localFile.c_str(), {}) == 0;
    const hlx::CString cameraPath = hlx::CString::FromFormat("/Temp/ps%d.bpl", list);
    return zvtSaveBadPixelList(m_handle, static_cast<uint8_t>(list), cameraPath.c_str()) == 0
        && zvtDownloadFileStd(m_handle, cameraPath.c_str(), localFile.c_str(), {}) == 0;
}

/// Writes the text of a list to the summary and to a file of its own, which may fail to open.
void BadPixelExport::writeText(const CBadPixelList &pixels, const hlx::CString &path)
{
    hlx::CFile file;
    file.Open(path, hlx::CFile::CreateForWriting);
    const auto write = [&](const hlx::CString &text) {
        m_summary.WriteString(text);
        file.WriteString(text);
    };
    uint16_t width = 0;
    uint16_t height = 0;
    pixels.GetSize(width, height);
    write(hlx::CString::FromFormat("Width:  %d\r\nHeight: %d\r\nCount:  %d\r\n   X,   Y\r\n", int{width}, int{height},
                                   static_cast<int>(pixels.GetCount())));
    forEachPixel(pixels, [&](int x, int y) { write(hlx::CString::FromFormat("%4d,%4d\r\n", x, y)); });
}

bool BadPixelExport::savePicture(const CBadPixelList &pixels, const hlx::CString &path)
{
    constexpr int bestQuality = 100;
    return pictureOf(pixels).save(QString::fromUtf8(path.c_str()), "PNG", bestQuality);
}
