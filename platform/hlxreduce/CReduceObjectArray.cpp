#include "hlx/CReduceObjectArray.h"

#include "hlx/CRCalReduceObject.h"

namespace hlx::reduce
{

namespace
{

std::unique_ptr<IReduceObject> make(const SGuid &type, int index)
{
    const int place = index < 0 ? 0 : index;
    if (type == CRCalReduceObject::classTypeID() && place == 0)
        return std::make_unique<CRCalReduceObject>();
    if (type == CCorrectionReduceObject::classTypeID() && place <= UINT8_MAX)
        return std::make_unique<CCorrectionReduceObject>(static_cast<uint8_t>(place));
    return nullptr;
}

} // namespace

IReduceObject::~IReduceObject() = default;

unsigned int SImageFormat::bytesPerPixel() const
{
    switch (dataType) {
    case 2:
    case 3:
        return 2;
    case 4:
    case 5:
    case 8:
        return 4;
    case 6:
    case 7:
    case 9:
        return 8;
    case 10:
        return 3;
    case 11:
        return 6;
    default:
        return 1;
    }
}

CReduceObjectArray::CReduceObjectArray(const CReduceObjectArray &other) : format(other.format)
{
    for (const auto &object : other.m_objects)
        m_objects.push_back(object->clone());
}

CReduceObjectArray &CReduceObjectArray::operator=(CReduceObjectArray other) noexcept
{
    format = other.format;
    m_objects.swap(other.m_objects);
    return *this;
}

IReduceObject *CReduceObjectArray::GetObjectOfType(SGuid type, int index, bool create)
{
    for (const auto &object : m_objects)
        if (object->typeID() == type && (index < 0 || object->index() == index))
            return object.get();
    std::unique_ptr<IReduceObject> made = create ? make(type, index) : nullptr;
    if (made == nullptr)
        return nullptr;
    m_objects.push_back(std::move(made));
    return m_objects.back().get();
}

CCorrectionReduceObject *CReduceObjectArray::GetCorrection(unsigned char preset, bool create)
{
    return dynamic_cast<CCorrectionReduceObject *>(
        GetObjectOfType(CCorrectionReduceObject::classTypeID(), preset, create));
}

} // namespace hlx::reduce
