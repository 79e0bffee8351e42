#pragma once

#include <cstdint>

#include "hlx/CNucFile.h"
#include "hlx/IReduceObject.h"

namespace hlx::reduce
{

/// The correction of one preset of a movie.
class CCorrectionReduceObject : public IReduceObject
{
public:
    explicit CCorrectionReduceObject(uint8_t preset = 0) : m_preset(preset) { }

    static SGuid classTypeID();

    SGuid typeID() const override { return classTypeID(); }
    int index() const override { return m_preset; }
    std::unique_ptr<IReduceObject> clone() const override;

    /// Stores a copy of the correction.
    void CreateFromNucFile(const CNucFile &file) { m_correction = file; }
    const CNucFile &correction() const { return m_correction; }

    uint8_t flag = 0; ///< 1 if replaced after the recording, else 0. Must stay the first member after the base.

private:
    uint8_t m_preset;
    CNucFile m_correction;
};

} // namespace hlx::reduce
