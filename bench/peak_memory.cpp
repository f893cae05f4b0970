// Loads one file and prints the process's peak memory in bytes, for the measurement of memory against file
// size.
#include <sys/resource.h>

#include <cstdio>

#include "bench_fixture.h"
#include "engine/text.h"

int main(int argc, char** argv) {
    if (argc != 2) return 1;
    nira::SetUpBench();
    nira::Editor* editor = nira::LoadBench(argv[1]);
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%ld\n", usage.ru_maxrss * 1024L);
    nira::EditorDestroy(editor);
    return 0;
}
