// What a person does inside a large document, without painting.
#include <benchmark/benchmark.h>

#include "app/services/memory.h"
#include "bench_fixture.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "view/clipboard_editing.h"
#include "view/indentation.h"
#include "view/measure.h"
#include "view/navigation.h"
#include "view/scroll.h"
#include "view/undo_apply.h"

namespace nira {

namespace {

// Large enough that the journal keeps a hundred megabytes of text.
constexpr uint32_t kLargeJournal = 1000000;
constexpr uint32_t kUsualJournal = 100;

Editor* ShowBench(const char* name) {
    Editor* editor = LoadBench(name);
    TheWindowState().currentEditor = editor;
    return editor;
}

void CloseShown(Editor* editor) {
    TheWindowState().currentEditor = nullptr;
    EditorDestroy(editor);
}

// Typed in the middle of the line and taken away again outside the clock.
void TypeInLine(benchmark::State& state, const char* name, bool wrap) {
    Editor* editor = ShowBench(name);
    if (wrap) ToggleWrap(editor);
    const uint32_t column = editor->lines[0].length / 2;
    const char16_t unit = u'x';
    for (auto _ : state) {
        TextInsert(editor, 0, column, &unit, 1);
        state.PauseTiming();
        TextDelete(editor, 0, column, 0, column + 1);
        state.ResumeTiming();
    }
    CloseShown(editor);
}

void OnePass(benchmark::State& state, const char* name) {
    Editor* editor = ShowBench(name);
    for (auto _ : state) {
        benchmark::DoNotOptimize(TextWidth(TheWindowState().editorWindow, editor->textStyle->font,
                                           editor->lines[0].text, editor->lines[0].length, OptionsTabSize()));
    }
    CloseShown(editor);
}

void Wrap(benchmark::State& state, const char* name) {
    Editor* editor = ShowBench(name);
    for (auto _ : state) ToggleWrap(editor);
    CloseShown(editor);
}

void PageUpFromTheEnd(benchmark::State& state, const char* name) {
    Editor* editor = ShowBench(name);
    for (auto _ : state) {
        GoToLine(editor, editor->lineCount - 1);
        for (int i = 0; i < 100; ++i) MovePageUp(editor, false);
    }
    CloseShown(editor);
}

using Step = void (*)(Editor*);

// Times one step of select all, cut, paste, undo, redo; the ones before it prepare outside the clock.
void Step100(benchmark::State& state, const char* name, int timed) {
    const Step steps[] = {SelectAll, CutSelection, [](Editor* editor) { Paste(editor, false); },
                          [](Editor* editor) { UndoApply(editor, true, false); },
                          [](Editor* editor) { UndoApply(editor, false, false); }};
    TheOptions().undoSize = kLargeJournal;
    for (auto _ : state) {
        state.PauseTiming();
        Editor* editor = ShowBench(name);
        for (int i = 0; i < timed; ++i) steps[i](editor);
        state.ResumeTiming();
        steps[timed](editor);
        state.PauseTiming();
        CloseShown(editor);
        state.ResumeTiming();
    }
    TheOptions().undoSize = kUsualJournal;
}

void Indent(benchmark::State& state, const char* name, bool undo) {
    TheOptions().undoSize = kLargeJournal;
    Editor* editor = ShowBench(name);
    SelectAll(editor);
    for (auto _ : state) {
        if (undo) state.PauseTiming();
        SelectAll(editor);
        IncreaseIndent(editor);
        if (undo) state.ResumeTiming();
        if (!undo) state.PauseTiming();
        UndoApply(editor, true, false);
        if (!undo) state.ResumeTiming();
    }
    CloseShown(editor);
    TheOptions().undoSize = kUsualJournal;
}

}  // namespace

BENCHMARK_CAPTURE(TypeInLine, 50MB, "line50.txt", false)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(TypeInLine, 50MB_wrapped, "line50.txt", true)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(OnePass, 50MB, "line50.txt")->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(Wrap, 100MB, "log100.txt")->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_CAPTURE(PageUpFromTheEnd, 1MB, "log1.txt")->Iterations(20);
BENCHMARK_CAPTURE(PageUpFromTheEnd, 100MB, "log100.txt")->Iterations(20);
BENCHMARK_CAPTURE(Step100, SelectAll, "log100.txt", 0)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Step100, Cut, "log100.txt", 1)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Step100, Paste, "log100.txt", 2)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Step100, Undo, "log100.txt", 3)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Step100, Redo, "log100.txt", 4)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Indent, 12500_lines, "log1.txt", false)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(Indent, 125000_lines, "log10.txt", false)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_CAPTURE(Indent, 125000_lines_undo, "log10.txt", true)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace nira
