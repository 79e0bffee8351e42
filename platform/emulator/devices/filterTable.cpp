#include "platform/emulator/devices/filterTable.h"

#include <array>
#include <iterator>
#include <string>

namespace emulator
{

namespace
{

struct Filter {
    const char *name;
    double transmission;
};

constexpr double clear = 1;
constexpr double edge = 0.5; // Short and long pass.
constexpr double band = 0.06; // Band pass.

// The transmissions of the neutral densities are powers of ten as decimals, since frames must have the same bytes with
// every mathematical library.
constexpr Filter stockFilters[] = {
    {"Empty", clear},     {"Open", clear},       {"Blocked", 0},        {"Sapphire", 0.85},   {"ND 0.3", 0.501187},
    {"ND 0.6", 0.251189}, {"ND 1.0", 0.1},       {"ND 1.3", 0.0501187}, {"ND 2.0", 0.01},     {"ND 3.0", 0.001},
    {"SP 2.50 um", edge}, {"SP 3.30 um", edge},  {"SP 4.00 um", edge},  {"SP 5.00 um", edge}, {"LP 2.00 um", edge},
    {"LP 3.60 um", edge}, {"LP 4.50 um", edge},  {"LP 7.80 um", edge},  {"BP 2.20 um", band}, {"BP 2.70 um", band},
    {"BP 3.00 um", band}, {"BP 3.30 um", band},  {"BP 3.42 um", band},  {"BP 3.70 um", band}, {"BP 3.90 um", band},
    {"BP 4.26 um", band}, {"BP 4.50 um", band},  {"BP 4.67 um", band},  {"BP 4.80 um", band}, {"BP 8.60 um", band},
    {"BP 9.50 um", band}, {"BP 10.60 um", band},
};

} // namespace

// Filters after the stock filters are made for single customers and have only a number.
const char *filterName(uint8_t id)
{
    static const auto customFilters = [] {
        std::array<std::string, filterCount - std::size(stockFilters)> names;
        for (size_t i = 0; i < names.size(); ++i)
            names[i] = "Custom " + std::to_string(i + 1);
        return names;
    }();
    if (id < std::size(stockFilters))
        return stockFilters[id].name;
    return id < filterCount ? customFilters[id - std::size(stockFilters)].c_str() : nullptr;
}

double filterTransmission(uint8_t id) { return id < std::size(stockFilters) ? stockFilters[id].transmission : clear; }

} // namespace emulator
