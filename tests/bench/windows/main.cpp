// Measures the real program against the floor and writes one table. Argument: --quick for a first impression.

#include "driver/Target.h"
#include "windows/Comparison.h"
#include "windows/Table.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr vextrel::bench::Extent full{30, 3, 20000, 200, 50, 10};
constexpr vextrel::bench::Extent quick{8, 1, 5000, 50, 15, 2};

} // namespace

int main(int argc, char** argv) {
    using namespace vextrel;
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const bench::Extent& extent = argc > 1 && std::strcmp(argv[1], "--quick") == 0 ? quick : full;
    try {
        // Another program with a window, so that nobody is charged for what the first one costs.
        const driver::Target other;
        bench::CompareDlls();
        bench::WriteHeading();
        bench::CompareStarts(extent);
        bench::CompareResources(extent);
        bench::CompareClicks(extent);
        bench::CompareOperations(extent);
        bench::CompareInjection(extent);
        bench::LookForFlicker(extent);
        return 0;
    } catch (const std::exception& error) {
        std::printf("not measured: %s\n", error.what());
        return 1;
    }
}
