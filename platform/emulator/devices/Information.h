#pragma once

#include "platform/emulator/Device.h"

#include <string>
#include <utility>
#include <vector>

namespace emulator
{

/// Additional information about a camera for the operator, as names with values in UTF-8.
class Information : public Device
{
public:
    /// A name and its value.
    using Row = std::pair<std::string, std::string>;

    /// Profile keys: "rows", a list of texts like "Firmware Version: 3.2.1".
    Information(Camera &camera, Section &section);

    const std::vector<Row> &rows() const { return m_rows; }

private:
    std::vector<Row> m_rows;
};

} // namespace emulator
