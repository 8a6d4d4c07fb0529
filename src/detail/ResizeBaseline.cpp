#include "detail/ResizeSchedule.h"

#if VASTRELLINE_X86

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "detail/ResizeVector.inl"

}  // namespace

void ResizeFrameBaseline(const ResizeCall& call) { RunResizeSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
