// SPDX-License-Identifier: Apache-2.0
// Every holder of tokens counts into one tally while it lives (a block its tokens, a
// sequence its spans), so that the preprocessor can bound what macro expansion holds; a
// leak there would trip that bound on honest input. Trimming a sequence narrows its spans
// and leaves the blocks it shares as they were. All of them live in the preprocessor's
// token memory, small blocks pooled and large ones from the heap.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "frontend/token_memory.hpp"
#include "frontend/token_sequence.hpp"

namespace edd {
namespace {

std::string spelled(const TokenSequence& sequence) {
    std::string out;
    for (const auto& span : sequence.spans())
        for (const Token& t : span.tokens()) out += t.is(WHITESPACE) ? std::string("_") : std::string(t.text());
    return out;
}

TEST(TokenHolders, CountWhileTheyLiveAndShareWhatTheyTakeOver) {
    const Token blank(WHITESPACE, "  "), line_end(NEWLINE, "\n"), a(IDENTIFIER, "a"), b(IDENTIFIER, "b");
    std::size_t tally = 0;
    TokenMemory memory;
    {
        TokenBlock block(tally, &memory);
        for (const Token& t : {blank, a, blank, b, line_end}) block.push_back(t);
        TokenBlock front(tally, &memory);
        front.push_back(b);
        block.prepend(std::move(front));
        EXPECT_EQ(tally, 6u);
        TokenBlock argument(tally, &memory);
        for (const Token& t : {blank, a, line_end}) argument.push_back(t);
        argument.trim_blanks();
        TokenBlock moved(tally, &memory);
        moved.push_back(b);
        moved = std::move(argument);  // b goes, a stays counted once
        EXPECT_EQ(tally, 7u);

        auto shared = make_shared_in<const TokenSequence>(&memory, tally, std::move(block));
        EXPECT_EQ(tally, 8u);  // the same six tokens, one span
        TokenSequence body(tally, &memory);
        body.push_back(blank);
        body.append(*shared);
        body.append(*shared);
        body.trim_blanks();
        EXPECT_EQ(spelled(body), "b_a_b\nb_a_b");
        EXPECT_EQ(spelled(*shared), "b_a_b\n");
        EXPECT_EQ(body.count(), 15u);  // a run of blanks counts one per character
        EXPECT_EQ(tally, 11u);  // the blank of its own, two spans over the shared block

        TokenBlock long_list(tally, &memory);  // grows past the pool's largest block
        for (int i = 0; i < 1000; ++i) long_list.push_back(a);
        EXPECT_EQ(tally, 1011u);
    }
    EXPECT_EQ(tally, 0u);
}

}  // namespace
}  // namespace edd
