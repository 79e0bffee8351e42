#pragma once

#include "platform/emulator/Device.h"

#include <string>
#include <utility>
#include <vector>

namespace emulator
{

/// What a camera tells about itself beside its identity: names and values for the operator to read, in UTF-8.
class Information : public Device
{
public:
    using Row = std::pair<std::string, std::string>;

    /// Knows in the profile: "rows", a list of texts like "Firmware Version: 3.2.1".
    Information(Camera &camera, Section &section);

    const std::vector<Row> &rows() const { return m_rows; }

private:
    std::vector<Row> m_rows;
};

} // namespace emulator
