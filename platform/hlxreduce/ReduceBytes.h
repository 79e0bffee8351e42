#pragma once

#include "hlx/CNucFile.h"
#include "hlx/CRCalFile.h"
#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/ByteStream.h"

namespace hlx::reduce
{

/// Write and read calibrations, corrections and reduce objects as they are stored in movies and packs. Corrupt bytes
/// put the reader into its error state, see ByteReader::ok().
void write(ByteWriter &writer, const CRCalFile &file);
void write(ByteWriter &writer, const CNucFile &file);
/// Writes the format of the frames, then the objects.
void write(ByteWriter &writer, const CReduceObjectArray &objects);

CRCalFile readCalibration(ByteReader &reader);
CNucFile readCorrection(ByteReader &reader);
CReduceObjectArray readObjects(ByteReader &reader);

} // namespace hlx::reduce
