#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/Palette.h"

#include <QStringList>

#include <string>

namespace emulator
{

/// The palette of the video output: the colours of the levels of the gain control. The camera's palettes are the files
/// of platform/emulator/palettes, each a list of 256 lists of red, green and blue. Names are UTF-8.
class VideoPalette : public Device
{
public:
    static constexpr auto defaultName = "Grayscale";

    /// Profile key and setting: "name". A profile may contain a name that the camera does not list; the colours are
    /// then those of the default palette.
    VideoPalette(Camera &camera, Section &section);

    /// The names of the camera's palettes, sorted. Any thread.
    static const QStringList &names();

    const std::string &name() const { return m_name; }
    /// Refuses a palette that the camera does not list.
    Status load(const std::string &name) { return assign(m_name, name); }

    /// The colours of the palette in use. The thread must hold the camera's lock; the colours remain, unchanged, until
    /// the process ends.
    const image::Palette &palette() const;

private:
    std::string m_name = defaultName;
};

} // namespace emulator
