#include "search/line_search.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "search/steady_search.h"

namespace nira {

namespace {

// ---- the choice of the two units ----

constexpr char16_t kCommon[] = u" etaoinsrhldcumfpgwybvk0123456789";  // the most common first

// Higher for units that are met less often. Other letters and signs are rarer than all of the list.
uint32_t Rarity(char16_t unit) {
    const char16_t* end = std::end(kCommon) - 1;
    return static_cast<uint32_t>(std::find(std::begin(kCommon), end, LowerUnit(unit)) - std::begin(kCommon));
}

// A long pattern need not be looked through to its end for two rare units.
constexpr uint32_t kLookedThrough = 64;

void ChooseProbes(LineSearch* search) {
    const uint32_t end = std::min(search->length, kLookedThrough);
    uint32_t best = 0;
    for (uint32_t i = 1; i < end; ++i) {
        if (Rarity(search->pattern[i]) > Rarity(search->pattern[best])) best = i;
    }
    uint32_t second = best == 0 && end > 1 ? 1 : 0;
    for (uint32_t i = 0; i < end; ++i) {
        if (i != best && Rarity(search->pattern[i]) > Rarity(search->pattern[second])) second = i;
    }
    search->probes[0] = best;
    search->probes[1] = second;
}

// ---- comparing ----

bool SameUnit(const LineSearch& search, char16_t left, char16_t right) {
    return left == right || (!search.matchCase && LowerUnit(left) == LowerUnit(right));
}

// How many units of the pattern were found at a place, in whole pieces where case counts.
uint32_t CompareAt(const LineSearch& search, const char16_t* text) {
    constexpr uint32_t kPiece = 16;
    uint32_t i = 0;
    if (search.matchCase) {
        while (i + kPiece <= search.length &&
               std::memcmp(text + i, search.pattern + i, kPiece * sizeof(char16_t)) == 0) {
            i += kPiece;
        }
        if (i + kPiece <= search.length) return i;
    }
    while (i < search.length && SameUnit(search, text[i], search.pattern[i])) ++i;
    return i;
}

// ---- eight places at once ----

// The compiler's own notation for what every processor of the last twenty years has.
using EightUnits = char16_t __attribute__((vector_size(16)));
using EightFlags = int16_t __attribute__((vector_size(16)));

constexpr uint32_t kEight = 8;
constexpr uint32_t kBlock = 4 * kEight;

struct Probe {
    EightUnits units[kLowerVariants];
};

Probe ProbeFor(const LineSearch& search, uint32_t number) {
    Probe probe = {};
    for (uint32_t i = 0; i < kLowerVariants; ++i) probe.units[i] = EightUnits{} + search.units[number][i];
    return probe;
}

template <uint32_t kVariants>
EightFlags FlagsAt(const Probe& probe, const char16_t* text) {
    EightUnits units;
    std::memcpy(&units, text, sizeof(units));
    EightFlags flags = units == probe.units[0];
    for (uint32_t i = 1; i < kVariants; ++i) flags |= units == probe.units[i];
    return flags;
}

struct Halves {
    uint64_t words[2];
    explicit Halves(const EightFlags& flags) { std::memcpy(words, &flags, sizeof(words)); }
    bool Any() const { return (words[0] | words[1]) != 0; }
};

// One run over a line: places are counted from the first that is looked at.
struct Scan {
    const LineSearch& search;
    const char16_t* text;
    uint32_t places;
    Probe probes[2];
    uint64_t work;  // units compared in vain
    bool givenUp;   // it was too much: the search must go on from the place that was returned, steadily

    template <uint32_t kVariants>
    EightFlags Candidates(uint32_t place) const {
        return FlagsAt<kVariants>(probes[0], text + place + search.probes[0]) &
               FlagsAt<kVariants>(probes[1], text + place + search.probes[1]);
    }

    // Whether the scan ends at a candidate.
    bool EndsAt(uint32_t place) {
        const uint32_t equal = CompareAt(search, text + place);
        if (equal == search.length) return true;
        work += equal;
        givenUp = work > uint64_t{4} * place + uint64_t{8} * search.length + 256;
        return givenUp;
    }

    // The first match among the flagged places, the lowest of which is first in memory: every system that
    // this editor runs on is little-endian.
    uint32_t Verify(uint32_t place, const EightFlags& flags) {
        const Halves halves(flags);
        for (uint32_t half = 0; half < 2; ++half) {
            for (uint64_t word = halves.words[half]; word != 0;) {
                const auto unit = static_cast<uint32_t>(std::countr_zero(word)) / 16;
                const uint32_t candidate = place + half * 4 + unit;
                if (EndsAt(candidate)) return candidate;
                word &= ~(uint64_t{0xFFFF} << (unit * 16));
            }
        }
        return kNoMatch;
    }

    template <uint32_t kVariants>
    uint32_t Run() {
        uint32_t place = 0;
        for (; place + kBlock <= places; place += kBlock) {
            const EightFlags flags[4] = {Candidates<kVariants>(place), Candidates<kVariants>(place + kEight),
                                         Candidates<kVariants>(place + 2 * kEight),
                                         Candidates<kVariants>(place + 3 * kEight)};
            if (!Halves(flags[0] | flags[1] | flags[2] | flags[3]).Any()) continue;
            for (uint32_t i = 0; i < 4; ++i) {
                const uint32_t match = Verify(place + i * kEight, flags[i]);
                if (match != kNoMatch) return match;
            }
        }
        return RunEnd<kVariants>(place);
    }

    // The last eight places overlap what was looked at already rather than being looked at one by one.
    template <uint32_t kVariants>
    uint32_t RunEnd(uint32_t place) {
        while (place < places && places >= kEight) {
            const uint32_t at = std::min(place, places - kEight);
            const uint32_t match = Verify(at, Candidates<kVariants>(at));
            if (match != kNoMatch) return match;
            place = at + kEight;
        }
        for (; place < places; ++place) {
            if (EndsAt(place)) return place;
        }
        return kNoMatch;
    }
};

}  // namespace

void PrepareLineSearch(LineSearch* search, const char16_t* pattern, uint32_t length, bool matchCase) {
    *search = {};
    search->pattern = pattern;
    search->length = length;
    search->matchCase = matchCase;
    search->variants = 1;
    if (length == 0) return;
    ChooseProbes(search);
    for (uint32_t number = 0; number < 2; ++number) {
        const char16_t unit = pattern[search->probes[number]];
        std::fill_n(search->units[number], kLowerVariants, unit);
        if (matchCase) continue;
        std::fill_n(search->units[number], kLowerVariants, LowerUnit(unit));
        search->variants = std::max(search->variants, LowerVariants(unit, search->units[number]));
    }
}

uint32_t SearchLine(const LineSearch& search, const char16_t* text, uint32_t from, uint32_t length) {
    if (search.length == 0 || from > length || search.length > length - from) return kNoMatch;
    Scan scan = {
        search, text + from, length - from - search.length + 1, {ProbeFor(search, 0), ProbeFor(search, 1)},
        0,      false};
    uint32_t place = kNoMatch;
    if (search.variants == 1) {
        place = scan.Run<1>();
    } else if (search.variants == 2) {
        place = scan.Run<2>();
    } else {
        place = scan.Run<3>();
    }
    if (place == kNoMatch) return kNoMatch;
    const uint32_t start = from + place;
    if (!scan.givenUp) return start;
    const uint32_t match =
        SearchSteadily(search.pattern, search.length, search.matchCase, text + start, length - start);
    return match == kNoMatch ? kNoMatch : start + match;
}

}  // namespace nira
