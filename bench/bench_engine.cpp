// Loading, saving, closing and single edits at every size.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "app/services/memory.h"
#include "bench_fixture.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "files/save.h"
#include "view/editing.h"
#include "view/navigation.h"

namespace nira {

namespace {

void Load(benchmark::State& state, const char* name) {
    for (auto _ : state) {
        Editor* editor = LoadBench(name);
        state.PauseTiming();
        EditorDestroy(editor);
        state.ResumeTiming();
    }
}

void Close(benchmark::State& state, const char* name) {
    for (auto _ : state) {
        state.PauseTiming();
        Editor* editor = LoadBench(name);
        state.ResumeTiming();
        EditorDestroy(editor);
    }
}

void SaveCopy(benchmark::State& state, const char* name) {
    Editor* editor = LoadBench(name);
    TheOptions().bomSave = 0;
    for (auto _ : state) {
        char16_t* path = MemStrDup(nullptr, BenchFile("saved.txt").c_str());
        if (SaveAs(editor, path, kCodecUtf8, kLineEndLf) == 0) state.SkipWithError("not saved");
    }
    EditorDestroy(editor);
}

// One character typed and taken away again by turns, in the middle of the document, without painting.
void Type(benchmark::State& state, const char* name) {
    Editor* editor = LoadBench(name);
    const uint32_t line = editor->lineCount / 2;
    uint32_t column = editor->lines[line].length / 2;
    const char16_t unit = u'x';
    for (auto _ : state) {
        TextInsert(editor, line, column, &unit, 1);
        if (++column < 4000) continue;
        state.PauseTiming();
        TextDelete(editor, line, 40, line, column);
        column = 40;
        state.ResumeTiming();
    }
    EditorDestroy(editor);
}

void Enter(benchmark::State& state, const char* name) {
    Editor* editor = LoadBench(name);
    const uint32_t line = editor->lineCount / 2;
    const char16_t unit = u'\n';
    for (auto _ : state) TextInsert(editor, line, editor->lines[line].length / 2, &unit, 1);
    EditorDestroy(editor);
}

// What Enter is held against: half of the line array moved up by one record.
void MoveHalfTheLines(benchmark::State& state, const char* name) {
    Editor* editor = LoadBench(name);
    const size_t half = editor->lineCount / 2;
    std::vector<LineRecord> lines(editor->lineCount + 1);
    for (auto _ : state) {
        std::memmove(&lines[half + 1], &lines[half], (editor->lineCount - half) * sizeof(LineRecord));
        benchmark::ClobberMemory();
    }
    EditorDestroy(editor);
}

}  // namespace

BENCHMARK_CAPTURE(Load, 1MB, "log1.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, 10MB, "log10.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, 100MB, "log100.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, 50MB, "log50.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, 50MB_line, "line50.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Close, 100MB, "log100.txt")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(SaveCopy, 100MB, "log100.txt")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Type, 1MB, "log1.txt")->Iterations(20000);
BENCHMARK_CAPTURE(Type, 100MB, "log100.txt")->Iterations(20000);
BENCHMARK_CAPTURE(Enter, 100MB, "log100.txt")->Iterations(50);
BENCHMARK_CAPTURE(MoveHalfTheLines, 100MB, "log100.txt")->Iterations(50);

}  // namespace nira

int main(int argc, char** argv) {
    nira::SetUpBench();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
