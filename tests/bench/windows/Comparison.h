#pragma once

#include "driver/Sandbox.h"
#include "windows/Subject.h"

namespace vextrel::bench {

/// How much is measured.
struct Extent {
    int starts; ///< of each of the two, in turn
    int idles;  ///< of both side by side
    DWORD idleMs;
    int clicks;
    int operations;
    int injections;
};

/// The real program, in a folder of its own, or the floor.
[[nodiscard]] Subject StartProgram(const driver::Sandbox& sandbox);
[[nodiscard]] Subject StartFloor();

/// Each writes its lines of the table.
void CompareStarts(const Extent& extent);
void CompareResources(const Extent& extent);
void CompareClicks(const Extent& extent);
void CompareOperations(const Extent& extent);
void CompareInjection(const Extent& extent);

/// Says how often a key was seen with a picture that is neither its old nor its new one while captions changed.
void LookForFlicker(const Extent& extent);

/// Says which DLLs only one of the two has, if any.
void CompareDlls();

} // namespace vextrel::bench
