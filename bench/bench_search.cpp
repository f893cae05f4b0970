// Finding and replacing in a large document.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "bench_fixture.h"
#include "engine/editor_life.h"
#include "engine/window_state.h"
#include "search/find.h"
#include "search/search_state.h"

namespace nira {

namespace {

void Search(const char16_t* pattern, const char16_t* replacement, bool matchCase) {
    SetSearchPattern(pattern);
    SetSearchReplacement(replacement);
    TheSearchState().matchCase = matchCase ? 1 : 0;
}

// A pattern that is not there: one look over the whole document. bench/run gives the same to grep.
void FindAbsent(benchmark::State& state, bool matchCase) {
    Editor* editor = LoadBench("log100.txt");
    TheWindowState().currentEditor = editor;
    Search(u"connection refused", u"", matchCase);
    for (auto _ : state) {
        if (FindNext(editor)) std::abort();
    }
    TheWindowState().currentEditor = nullptr;
    EditorDestroy(editor);
}

void Replace(benchmark::State& state, const char* name, uint32_t hits) {
    Search(u"needle", u"pinpoint", true);
    for (auto _ : state) {
        state.PauseTiming();
        Editor* editor = LoadBench(name);
        TheWindowState().currentEditor = editor;
        state.ResumeTiming();
        if (ReplaceAll(editor) != hits) std::abort();
        state.PauseTiming();
        TheWindowState().currentEditor = nullptr;
        EditorDestroy(editor);
        state.ResumeTiming();
    }
}

}  // namespace

BENCHMARK_CAPTURE(FindAbsent, MatchCase, true)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(FindAbsent, AnyCase, false)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(Replace, 1000_hits, "hits1.txt", 1000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_CAPTURE(Replace, 12000_hits, "hits12000.txt", 12000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK_CAPTURE(Replace, 100000_hits, "hits100.txt", 100000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace nira
