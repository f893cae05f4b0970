#include "bench_fixture.h"

#include <cstdio>
#include <cstdlib>

#include "app/services/memory.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "files/load.h"
#include "platform/host/surface_state.h"
#include "settings/options_store.h"
#include "view/fonts.h"

namespace nira {

void SetUpBench() {
    static WindowTag window;
    window.client = {480, 640};
    TheWindowState().editorWindow = &window;
    TheWindowState().clientWidth = window.client.width;
    if (InitCodecs() == 0 || InitFonts(&window) == 0 || LoadOptions() == 0) std::abort();
    TextStyle* styles[] = {OptionsTextStyle(), OptionsSelectionStyle()};
    const FontHandle font = AcquireFont(u"Proportional\x000E");
    for (TextStyle* style : styles) style->font = font;
}

std::u16string BenchFile(const char* name) {
    const char* folder = std::getenv("NIRA_BENCH_DIR");
    const std::string path = std::string(folder != nullptr ? folder : "/tmp") + "/" + name;
    return {path.begin(), path.end()};
}

Editor* LoadBench(const char* name) {
    Editor* editor = EditorCreate();
    char16_t* path = MemStrDup(nullptr, BenchFile(name).c_str());
    if (editor == nullptr || Load(editor, path, kCodecUtf8) == 0) {
        std::fprintf(stderr, "cannot load %s\n", name);
        std::exit(1);
    }
    return editor;
}

}  // namespace nira
