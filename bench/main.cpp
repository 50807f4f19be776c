// cmif-bench [--quick]: prints every figure as a line for bench/report, which judges them. A quick
// run proves only that everything runs.
#include "measure.h"
#include "parts.h"
#include "stores.h"

#include <string_view>

int main(int argc, char **argv)
{
    bench::print_figures_to_stdout();
    if (argc > 1 && std::string_view(argv[1]) == "--quick")
        bench::pace = {2, 1};
    const bench::HostStoreFolder folder;
    bench::against_by_hand();
    bench::growth();
    return bench::against_peers() ? 0 : 1;
}
