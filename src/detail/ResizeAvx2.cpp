#include "detail/ResizeSchedule.h"

#if VASTRELLINE_X86

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

#include "detail/ResizeVector.inl"

}  // namespace

void ResizeFrameAvx2(const ResizeCall& call) { RunResizeSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
