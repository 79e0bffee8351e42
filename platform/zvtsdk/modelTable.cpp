// The SDK's table of all camera models.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"
#include "platform/zvtsdk/names.h"

namespace
{

enum Board : uint8_t { Zvt1, Zvt2, Alder, Elm, Corvin, Linden, Rowan };
enum Type : uint8_t { Hazel, Sorrel, Bracken, Tansy, Yarrow, Teasel, Campion };
enum Detector : uint8_t { InSb, Mct, Sls, InGaAs, Bolometer, TwoColors };
enum Readout : uint8_t { R320A, R640A, R640D, R1280A, R1280D, R512S, R384U };
enum Pleora : uint8_t { NoPleora, OnePort, TwoPorts, TenGigabit };
enum Variant : uint8_t { Standard, Extended, Export, Demonstrator };
enum FilterWheel : uint8_t { NoWheel, HasWheel };

// The number of prototypes that were built before they got a name. No table contains it.
constexpr uint8_t unnamed = 99;

constexpr zvtSModelInfo model(const char *name, uint8_t board, uint8_t type, uint8_t subType, uint8_t detector,
                              uint8_t readout, uint8_t pleora, uint8_t variant, FilterWheel filterWheel)
{
    zvtSModelInfo info{};
    info.boardSet = board;
    info.type = type;
    info.detectorType = detector;
    info.roicType = readout;
    info.subType = subType;
    info.pleoraBoard = pleora;
    info.variant = variant;
    info.filterWheel = filterWheel;
    info.name = name;
    const char *subTypeName = zvt::subtypeName(type, subType);
    info.subTypeName = subTypeName ? subTypeName : "Prototype";
    return info;
}

// Grouped by board.
constexpr zvtSModelInfo models[] = {
    model("Hazel 320", Zvt1, Hazel, 0, InSb, R320A, NoPleora, Standard, NoWheel),
    model("Hazel 320 B", Zvt1, Hazel, 1, InSb, R320A, OnePort, Standard, HasWheel),
    model("Hazel 640", Zvt1, Hazel, 0, InSb, R640A, NoPleora, Standard, NoWheel),
    model("Hazel 640 B", Zvt1, Hazel, 1, InSb, R640A, OnePort, Standard, HasWheel),
    model("Hazel 640 BX", Zvt1, Hazel, 1, InSb, R640A, OnePort, Export, HasWheel),
    model("Sorrel 320", Zvt1, Sorrel, 0, Mct, R320A, NoPleora, Standard, NoWheel),

    model("Sorrel 640", Zvt2, Sorrel, 0, Mct, R640A, OnePort, Standard, NoWheel),
    model("Sorrel 640 B", Zvt2, Sorrel, 1, Mct, R640D, OnePort, Standard, HasWheel),
    model("Sorrel 640 W", Zvt2, Sorrel, 2, Mct, R640D, OnePort, Extended, NoWheel),
    model("Sorrel 640 WX", Zvt2, Sorrel, 2, Mct, R640D, OnePort, Export, NoWheel),
    model("Bracken 640", Zvt2, Bracken, 0, InSb, R640D, TwoPorts, Standard, HasWheel),
    model("Bracken 640 L", Zvt2, Bracken, 1, InSb, R640D, TwoPorts, Standard, HasWheel),

    model("Bracken 1280", Alder, Bracken, 0, InSb, R1280A, TwoPorts, Standard, HasWheel),
    model("Bracken 1280 L", Alder, Bracken, 1, InSb, R1280A, TwoPorts, Standard, HasWheel),
    model("Bracken 1280 S", Alder, Bracken, 0, Sls, R1280D, TwoPorts, Extended, HasWheel),
    model("Teasel 512", Alder, Teasel, 0, InSb, R512S, TwoPorts, Standard, NoWheel),
    model("Teasel 512 D", Alder, Teasel, 1, InSb, R512S, TwoPorts, Standard, NoWheel),
    model("Teasel 512 DX", Alder, Teasel, 1, InSb, R512S, TwoPorts, Export, NoWheel),

    model("Tansy 384", Elm, Tansy, 0, Bolometer, R384U, NoPleora, Standard, NoWheel),
    model("Tansy 384 X", Elm, Tansy, 0, Bolometer, R384U, NoPleora, Export, NoWheel),
    model("Tansy 384 G", Elm, Tansy, 0, Bolometer, R384U, OnePort, Standard, NoWheel),
    model("Tansy 320 N", Elm, Tansy, 0, InGaAs, R320A, OnePort, Standard, NoWheel),
    model("Tansy 640 N", Elm, Tansy, 0, InGaAs, R640A, OnePort, Standard, NoWheel),
    model("Tansy 640 ND", Elm, Tansy, 0, InGaAs, R640A, OnePort, Demonstrator, NoWheel),

    model("Yarrow 640", Corvin, Yarrow, 0, InSb, R640D, OnePort, Standard, HasWheel),
    model("Yarrow 640 G", Corvin, Yarrow, 1, InSb, R640D, OnePort, Standard, HasWheel),
    model("Yarrow 640 M", Corvin, Yarrow, 2, InSb, R640D, OnePort, Extended, HasWheel),
    model("Yarrow 640 S", Corvin, Yarrow, 0, Sls, R640D, OnePort, Standard, HasWheel),
    model("Yarrow 1280", Corvin, Yarrow, 0, InSb, R1280D, TwoPorts, Standard, HasWheel),
    model("Yarrow 1280 M", Corvin, Yarrow, 2, InSb, R1280D, TwoPorts, Extended, HasWheel),

    model("Campion 640", Linden, Campion, 0, InSb, R640D, TwoPorts, Standard, HasWheel),
    model("Campion 640 V", Linden, Campion, 1, InSb, R640D, TwoPorts, Standard, HasWheel),
    model("Campion 640 T", Linden, Campion, 0, TwoColors, R640D, TwoPorts, Standard, HasWheel),
    model("Campion 640 C", Linden, Campion, 2, Mct, R640D, TwoPorts, Extended, HasWheel),
    model("Campion 1280", Linden, Campion, 0, Sls, R1280D, TenGigabit, Standard, HasWheel),
    model("Campion 1280 V", Linden, Campion, 1, Sls, R1280D, TenGigabit, Standard, HasWheel),

    model("Teasel 640", Rowan, Teasel, 0, InSb, R640D, TenGigabit, Standard, NoWheel),
    model("Teasel 640 D", Rowan, Teasel, 1, InSb, R640D, NoPleora, Standard, NoWheel),
    model("Teasel 1280", Rowan, Teasel, 0, Sls, R1280D, TenGigabit, Standard, NoWheel),
    model("Teasel 1280 D", Rowan, Teasel, 1, Sls, R1280D, TenGigabit, Standard, NoWheel),
    model("Hazel 640 R", Rowan, Hazel, 0, InGaAs, R640A, OnePort, Standard, NoWheel),
    model("Hazel 640 RD", Rowan, Hazel, 1, InGaAs, R640A, OnePort, Demonstrator, NoWheel),

    model("Linden prototype", Linden, unnamed, unnamed, TwoColors, unnamed, TenGigabit, unnamed, NoWheel),
    model("Rowan prototype", Rowan, Campion, unnamed, unnamed, R1280D, unnamed, Demonstrator, NoWheel),
    model("Bench prototype", unnamed, unnamed, 0, unnamed, unnamed, unnamed, unnamed, HasWheel),
    {},
};

} // namespace

const void *zvtGetModelInfoTable()
{
    return emulator::lookUp(__func__, [] { return static_cast<const void *>(models); });
}
