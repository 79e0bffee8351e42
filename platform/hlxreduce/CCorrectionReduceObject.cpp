#include "hlx/CCorrectionReduceObject.h"

namespace hlx::reduce
{

SGuid CCorrectionReduceObject::classTypeID()
{
    return {{0x6b, 0x1f, 0x0e, 0xd4, 0x93, 0x5a, 0x4c, 0x27, 0xa8, 0x70, 0x3d, 0x15, 0xc2, 0xee, 0x49, 0x02}};
}

std::unique_ptr<IReduceObject> CCorrectionReduceObject::clone() const
{
    return std::make_unique<CCorrectionReduceObject>(*this);
}

} // namespace hlx::reduce
