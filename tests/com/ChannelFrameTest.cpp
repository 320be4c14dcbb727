#include "channel/ChannelFrame.h"

#include <gtest/gtest.h>

#include <cstring>

namespace solvane {
namespace {

std::string textAt(const std::vector<std::byte>& block, std::size_t offset) {
    return reinterpret_cast<const char*>(block.data()) + offset;
}

TEST(SetChannelError, aMessageIsWholeUpToTheRoomAndCutBeyondIt) {
    constexpr std::size_t size = 64;
    for (const std::size_t length : {size_t{0}, size - 6, size - 5, size - 4, size * 3}) {
        std::vector<std::byte> block(size + 1, std::byte{0xAA});
        const std::string message(length, 'm');
        SetChannelError({block.data(), size}, message);
        std::uint32_t status = 0;
        std::memcpy(&status, block.data(), sizeof status);
        EXPECT_EQ(status, 1u);
        EXPECT_EQ(textAt(block, 4), length <= size - 5 ? message : std::string(size - 8, 'm') + "...");
        EXPECT_EQ(block[size], std::byte{0xAA}); // nothing behind the block
        if (length >= size - 5) {
            EXPECT_EQ(block[size - 1], std::byte{0});
        }
    }
}

TEST(ReplyWriter, aFieldThatDoesNotFitLeavesTheOnesBeforeIt) {
    std::vector<std::byte> block(16, std::byte{0xAA});
    ReplyWriter reply(block);
    reply.success();
    reply.real(2.5);
    EXPECT_EQ(reply.room(), 4u);
    EXPECT_THROW(reply.real(1.0), const char*);
    reply.integer(7); // the last four bytes
    EXPECT_EQ(reply.room(), 0u);
    EXPECT_THROW(reply.text(""), const char*);
    double written = 0;
    std::memcpy(&written, block.data() + 4, sizeof written);
    EXPECT_EQ(written, 2.5);
}

TEST(RequestReader, fieldsFollowOneAnotherUnalignedAndEndAtTheBlock) {
    std::vector<std::byte> block(4 + 3 + 8 + 4, std::byte{'x'});
    std::memcpy(block.data() + 4, "ab", 3);
    const double value = -1e-300;
    std::memcpy(block.data() + 7, &value, sizeof value);
    RequestReader request(block);
    EXPECT_EQ(request.text(), "ab");
    EXPECT_EQ(request.real(), value);
    EXPECT_EQ(request.text(), "xxxx"); // without its NUL
    EXPECT_THROW(request.integer(), const char*);
    RequestReader again(block);
    EXPECT_THROW(again.reals(static_cast<std::size_t>(-1) / 4), const char*);
    EXPECT_TRUE(again.reals(0).empty());
}

} // namespace
} // namespace solvane
