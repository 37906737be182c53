// SPDX-License-Identifier: Apache-2.0
// The arena hands out memory aligned as asked and never the same bytes twice: from heap
// chunks that double, from room shared with large source texts read meanwhile, and from
// room of their own for large requests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

#include "files/source_text.hpp"
#include "frontend/token_kind.hpp"
#include "model/arena.hpp"
#include "model/code_value.hpp"
#include "model/simple_value.hpp"

namespace edd {
namespace {

TEST(Arena, AlignedAndDisjoint) {
    constexpr std::size_t mib = std::size_t{1} << 20;
    // Mostly small requests, then requests large enough to leave the heap chunks, and
    // requests of room of their own.
    std::vector<std::size_t> sizes;
    std::mt19937 random(20261124u);
    for (int i = 0; i < 3000; ++i) sizes.push_back(1 + random() % 300);
    for (int i = 0; i < 30; ++i) sizes.push_back(300'000);
    for (std::size_t size : {2 * mib - 8, 2 * mib, 5 * mib}) sizes.push_back(size);
    for (int i = 0; i < 100; ++i) sizes.push_back(1 + random() % 30);

    struct Taken {
        unsigned char* at;
        std::size_t size;
        unsigned char fill;
    };
    std::vector<Taken> taken;
    std::vector<SourceTextRoom::Room> texts;
    Arena arena;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (i % 700 == 350) {  // a large text read in the middle of the arena's room
            texts.push_back(SourceTextRoom().take(100'000));
            std::memset(texts.back().bytes, 0xEE, 100'000);
            taken.push_back({reinterpret_cast<unsigned char*>(texts.back().bytes), 100'000, 0xEE});
        }
        const std::size_t alignment = sizes[i] == 2 * mib - 8 ? 8 : std::size_t{1} << (random() % 7);
        auto* at = static_cast<unsigned char*>(arena.resource()->allocate(sizes[i], alignment));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(at) % alignment, 0u) << i;
        const auto fill = static_cast<unsigned char>(i * 37 + 1);
        std::memset(at, fill, sizes[i]);
        taken.push_back({at, sizes[i], fill});
    }
    for (const Taken& t : taken)
        ASSERT_TRUE(std::all_of(t.at, t.at + t.size, [&t](unsigned char c) { return c == t.fill; }));
    EXPECT_EQ(arena.copy("text"), "text");
    EXPECT_EQ(arena.word("VARIABLE").data(), arena.word("VARIABLE").data());  // the keyword table's own text
}

// Texts of a large source are the arena's without a copy: they lie in the room it shares
// with the source, which it keeps once the reading is over and the source is gone.
TEST(Arena, KeepsSourceTextsAfterTheReading) {
    constexpr std::string_view code = "x = [key]; put_message(\"done\");";
    auto room = std::make_unique<SourceText>([code] {
        SourceTextRoom::Room taken = SourceTextRoom().take(100'001);
        std::memset(taken.bytes, ' ', 100'000);
        std::memcpy(taken.bytes + 50'000, code.data(), code.size());
        taken.bytes[100'000] = '\0';
        return SourceText(std::move(taken.owner), taken.bytes, 100'000);
    }());
    const std::string_view source = room->view().substr(50'000, code.size());
    Arena arena;  // after the source, like a parse's: it takes room beside it
    auto* string = arena.make<SimpleValue>(ValueKind::STRING, source.substr(24, 4));
    const std::string_view name = arena.copy(source.substr(0, 1));
    const std::pair<std::uint32_t, std::string_view> pieces[] = {
        {IDENTIFIER, source.substr(0, 1)}, {EQUALS, source.substr(2, 1)}, {LEFT_SQUARE_BRACKET, source.substr(4, 1)},
        {IDENTIFIER, source.substr(5, 3)}, {STRING, source.substr(24, 0)}, {STRING, source.substr(24, 4)}};
    std::vector<CodeToken> tokens;
    for (const auto& [kind, text] : pieces) tokens.push_back({kind, static_cast<std::uint32_t>(text.size()), text.data()});
    const CodeValue* method = arena.make<CodeValue>(std::span<const CodeToken>(tokens));
    EXPECT_EQ(name.data(), source.data());
    EXPECT_EQ(string->text().data(), source.data() + 24);
    EXPECT_EQ(method->tokens()[3].data, source.data() + 5);

    room.reset();
    EXPECT_EQ(name, "x");
    EXPECT_EQ(string->text(), "done");
    EXPECT_EQ(method->to_string(), "x = [ key \"\" \"done\" ");
    KeySet keys;
    method->collect_dictionary_keys(keys);
    EXPECT_EQ(keys, KeySet{"key"});
}

}  // namespace
}  // namespace edd
