#pragma once

#include "hlx/CNucFile.h"
#include "hlx/CRCalFile.h"
#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/ByteStream.h"

namespace hlx::reduce
{

/// The bytes of calibrations, corrections and reduce objects, as they stand inside movies and packs. What is read from
/// foreign or corrupt bytes spoils the reader.
void write(ByteWriter &writer, const CRCalFile &file);
void write(ByteWriter &writer, const CNucFile &file);
/// The format of the frames, then the objects.
void write(ByteWriter &writer, const CReduceObjectArray &objects);

CRCalFile readCalibration(ByteReader &reader);
CNucFile readCorrection(ByteReader &reader);
CReduceObjectArray readObjects(ByteReader &reader);

} // namespace hlx::reduce
