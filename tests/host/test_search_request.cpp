#include "search/search_request.h"

#include "host/view_fixture.h"
#include "platform/host/message_log.h"
#include "search/search_state.h"

namespace nira {
namespace {

class SearchRequests : public ViewTest {
  protected:
    SearchRequests() { MessageLogReset(); }
    ~SearchRequests() override { FreeSearchState(); }

    static std::u16string Told() {
        EXPECT_EQ(MessageLog().size(), 1u);
        if (MessageLog().empty()) return {};
        const ShownMessage box = MessageLog().front();
        EXPECT_EQ(box.caption, u"Information");
        EXPECT_EQ(box.kind, MessageKind::kInformation);
        return box.text;
    }

    WindowTag dialog_;
};

TEST_F(SearchRequests, AreTakenOver) {
    EXPECT_TRUE(AcceptSearch({u"one", u"two", true, true, true}));

    const SearchState& state = TheSearchState();
    EXPECT_EQ(std::u16string(state.pattern), u"one");
    EXPECT_EQ(std::u16string(state.replacement), u"two");
    EXPECT_EQ(state.matchCase, 1);
    EXPECT_EQ(state.wholeWord, 1);
    EXPECT_EQ(state.up, 1);
}

TEST_F(SearchRequests, OfFindLeaveTheReplacement) {
    AcceptSearch({u"one", u"two", true, true, true});
    AcceptSearch({u"three", nullptr, false, false, false});

    const SearchState& state = TheSearchState();
    EXPECT_EQ(std::u16string(state.pattern), u"three");
    EXPECT_EQ(std::u16string(state.replacement), u"two");
    EXPECT_EQ(state.matchCase + state.wholeWord + state.up, 0);
}

TEST_F(SearchRequests, WithoutAPatternChangeNothing) {
    AcceptSearch({u"one", u"two", true, true, true});

    EXPECT_FALSE(AcceptSearch({u"", u"three", false, false, false}));
    EXPECT_FALSE(AcceptSearch({nullptr, u"three", false, false, false}));

    const SearchState& state = TheSearchState();
    EXPECT_EQ(std::u16string(state.pattern), u"one");
    EXPECT_EQ(std::u16string(state.replacement), u"two");
    EXPECT_EQ(state.matchCase + state.wholeWord + state.up, 3);
}

TEST_F(SearchRequests, ReplaceAllTellsTheNumberOverTheDialog) {
    Fill(u"x x\nx");
    AcceptSearch({u"x", u"y", false, false, false});

    ReplaceAllAndTell(&dialog_);

    EXPECT_EQ(Told(), u"3 occurrences replaced");
    EXPECT_EQ(MessageLog().front().owner, &dialog_);
    EXPECT_EQ(Text(), u"y y\ny");
}

TEST_F(SearchRequests, ReplaceAllTellsOfNoMatchToo) {
    Fill(u"one");
    AcceptSearch({u"x", u"", false, false, false});

    ReplaceAllAndTell(&dialog_);

    EXPECT_EQ(Told(), u"0 occurrences replaced");
}

TEST_F(SearchRequests, ReplaceAllWithoutADocumentReplacesNothing) {
    TheWindowState().currentEditor = nullptr;
    AcceptSearch({u"x", u"y", false, false, false});

    ReplaceAllAndTell(&dialog_);

    EXPECT_EQ(Told(), u"0 occurrences replaced");
    TheWindowState().currentEditor = editor_;
}

}  // namespace
}  // namespace nira
