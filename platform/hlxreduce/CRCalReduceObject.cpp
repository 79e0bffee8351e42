#include "hlx/CRCalReduceObject.h"

namespace hlx::reduce
{

SGuid CRCalReduceObject::classTypeID()
{
    return {{0x2d, 0x84, 0x57, 0xb9, 0x0c, 0xe1, 0x46, 0x3f, 0x91, 0x0a, 0x7e, 0x68, 0xf5, 0x23, 0xbb, 0x01}};
}

std::unique_ptr<IReduceObject> CRCalReduceObject::clone() const { return std::make_unique<CRCalReduceObject>(*this); }

} // namespace hlx::reduce
