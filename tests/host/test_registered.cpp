#include "codecs/registered.h"

#include "host/files_support.h"
#include "host/library_codec.h"

namespace nira {
namespace {

using codecs::EntryOfForm;
using codecs::FindSister;
using codecs::Form;

class Registered : public ServicesTest {};

TEST_F(Registered, PositionsAreThoseOfTheProgramsOwnList) {
    ListEncodings(LibraryNames());
    ListEncodings({u"A first one", u"Zebra", u"UTF-8 exact from elsewhere", u"a"});
    ASSERT_EQ(InitCodecs(), 1);
    const codecs::Entry& own = *EntryOfForm(Form::kAuto, false);
    for (const codecs::Entry& sister : codecs::kEntries) {
        uint32_t index = 0;
        if (!codecs::EntryIsAvailable(sister)) continue;
        ASSERT_TRUE(FindSister(own, CodecIndex(own.name), sister, &index));
        EXPECT_EQ(index, CodecIndex(sister.name));
    }
}

TEST_F(Registered, ASisterThatIsNotListedIsNotFound) {
    ListEncodings({u"Auto", u"UTF-8 exact"});
    uint32_t index = 99;
    const codecs::Entry& own = *EntryOfForm(Form::kAuto, false);
    EXPECT_FALSE(FindSister(own, 5, *EntryOfForm(Form::kUtf8, true), &index));
    EXPECT_TRUE(FindSister(own, 5, *EntryOfForm(Form::kUtf8, false), &index));
    EXPECT_EQ(index, 6u);
}

TEST_F(Registered, AListThatHasChangedSinceIsNotBelieved) {
    ListEncodings({u"Another", u"Auto", u"UTF-8 exact"});
    uint32_t index = 99;
    EXPECT_FALSE(FindSister(*EntryOfForm(Form::kAuto, false), 5, *EntryOfForm(Form::kUtf8, false), &index));
    EXPECT_EQ(index, 99u);
}

TEST_F(Registered, WithoutAListThereAreNoSisters) {
    uint32_t index = 99;
    EXPECT_FALSE(FindSister(*EntryOfForm(Form::kAuto, false), 5, *EntryOfForm(Form::kUtf8, false), &index));
}

}  // namespace
}  // namespace nira
