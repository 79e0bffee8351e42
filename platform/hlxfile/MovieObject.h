#pragma once

#include <memory>
#include <utility>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Carries a value from the movie that is read to the movie that is written, in the array of reduce objects that both
/// use: a MovieDescription from Open() to Create(), a MovieFrame from GetFrame() to PutFrame(). Movies contain these
/// values at their own places, not among the reduce objects.
template <class Value> class MovieObject final : public reduce::IReduceObject
{
public:
    static SGuid classTypeID();

    /// The value that an array carries; null if none.
    static const Value *in(reduce::CReduceObjectArray &objects)
    {
        const MovieObject *object = find(objects);
        return object == nullptr ? nullptr : &object->m_value;
    }

    /// Lets an array carry a value, in place of the previous one.
    static void put(reduce::CReduceObjectArray &objects, Value value)
    {
        if (MovieObject *object = find(objects))
            object->m_value = std::move(value);
        else
            objects.add(std::make_unique<MovieObject>(std::move(value)));
    }

    explicit MovieObject(Value value) : m_value(std::move(value)) { }

    SGuid typeID() const override { return classTypeID(); }
    int index() const override { return 0; }
    std::unique_ptr<IReduceObject> clone() const override { return std::make_unique<MovieObject>(m_value); }

private:
    static MovieObject *find(reduce::CReduceObjectArray &objects)
    {
        return static_cast<MovieObject *>(objects.GetObjectOfType(classTypeID(), -1, false));
    }

    Value m_value;
};

template <> inline SGuid MovieObject<MovieDescription>::classTypeID()
{
    return {{0x9a, 0x31, 0xc6, 0x5d, 0x77, 0x08, 0x4b, 0xe2, 0xb4, 0x19, 0x50, 0xfd, 0x2e, 0x83, 0x6c, 0x03}};
}

template <> inline SGuid MovieObject<MovieFrame>::classTypeID()
{
    return {{0xe5, 0x4c, 0x02, 0x98, 0x1d, 0xbf, 0x43, 0x76, 0x8f, 0x25, 0xa9, 0x64, 0xd0, 0x3b, 0x17, 0x04}};
}

} // namespace hlx::file
