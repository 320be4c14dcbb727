#include "channel/ChannelFrame.h"

#include <gtest/gtest.h>

#include <cstring>

namespace solvane {
namespace {

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
