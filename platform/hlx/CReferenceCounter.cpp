#include "hlx/CReferenceCounter.h"

namespace hlx
{

void CReferenceCounter::AddRef() { m_count.fetch_add(1, std::memory_order_relaxed); }

void CReferenceCounter::Release()
{
    // The owner that releases last must see all changes that other owners made before they released the object.
    if (m_count.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    m_destroy(m_object);
    delete this;
}

} // namespace hlx
