#pragma once

#include "hlx/CString.h"
#include "hlx/delegate.h"

/// Converts a raw movie to a converted one, frame by frame, in the memory of one frame. If `calFile` is not empty, the
/// calibration and the corrections of this cal pack replace those of the movie; others stay.
///
/// `progress(2, done, total)` is called with done = 0 before anything is written, and after each frame with its number,
/// from 0. If it returns not 0 after a frame, the conversion ends there: the converted movie is shorter, and the result
/// is still 1. A frame that cannot be read is written as the frame before it; the first frame is then written as zeros,
/// with preset 0 and without a time.
///
/// Returns 1. Returns 0 if the raw movie cannot be opened or is abated or if the cal pack cannot be loaded, and then
/// writes nothing, and if the converted movie cannot be created. Throws std::bad_alloc if the memory does not suffice;
/// both files are closed then. Any thread.
int ConvertToQdseq(hlx::CString rqsFile, hlx::CString qdseqFile, hlx::CString calFile,
                   hlx::delegate<int(int, unsigned int, unsigned int)> progress);
