#include "common/ZvtModelModel.h"

#include "common/reading.h"
#include "zvt/zvtsdk.h"
#include "zvt/zvttypes.h"

#include <array>

namespace
{

const zvtSModelInfo *table() { return static_cast<const zvtSModelInfo *>(zvtGetModelInfoTable()); }

// The SDK's name of a value of one of its enumerations.
QString nameOf(uint8_t value, int (*lookUp)(uint8_t, char *, uint32_t))
{
    return textOr<256>(QStringLiteral("Error"), lookUp, value);
}

} // namespace

QString BoardTypeText(uint8_t boardSet)
{
    static constexpr std::array names{"ZVT1", "ZVT2", "ALDER", "ELM", "Corvin", "Linden", "Rowan"};
    return QString::fromLatin1(boardSet < names.size() ? names[boardSet] : "Error");
}

int ZvtModelModel::count()
{
    const zvtSModelInfo *const rows = table();
    int number = 0;
    while (rows[number].name != nullptr)
        ++number;
    return number;
}

ZvtModelModel::ZvtModelModel(int index) : m_index(index) { }

QString ZvtModelModel::name() const { return QString::fromUtf8(table()[m_index].name); }
QString ZvtModelModel::subTypeName() const { return QString::fromUtf8(table()[m_index].subTypeName); }

uint8_t ZvtModelModel::boardSet() const { return table()[m_index].boardSet; }
uint8_t ZvtModelModel::type() const { return table()[m_index].type; }
uint8_t ZvtModelModel::detectorType() const { return table()[m_index].detectorType; }
uint8_t ZvtModelModel::roicType() const { return table()[m_index].roicType; }
uint8_t ZvtModelModel::subType() const { return table()[m_index].subType; }
uint8_t ZvtModelModel::pleoraBoard() const { return table()[m_index].pleoraBoard; }
uint8_t ZvtModelModel::variant() const { return table()[m_index].variant; }
uint8_t ZvtModelModel::filterWheel() const { return table()[m_index].filterWheel; }

QString ZvtModelModel::boardSetName() const { return BoardTypeText(boardSet()); }
QString ZvtModelModel::typeName() const { return nameOf(type(), zvtGetCameraTypeName); }
QString ZvtModelModel::roicTypeName() const { return nameOf(roicType(), zvtGetReadoutName); }
QString ZvtModelModel::detectorTypeName() const { return nameOf(detectorType(), zvtGetDetectorTypeName); }
QString ZvtModelModel::pleoraBoardName() const { return nameOf(pleoraBoard(), zvtGetPleoraBoardTypeName); }
QString ZvtModelModel::variantName() const { return nameOf(variant(), zvtGetVariantName); }

QString ZvtModelModel::filterWheelText() const
{
    return filterWheel() != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
}
