#include "Orbel/Packing.h"

#include <gtest/gtest.h>

TEST(Packing, FoldsInWindowsThatOverlap)
{
    const std::string expected[] = {"",      "0",      "01",      "012",      "3210",
                                    "32104", "325401", "3254016", "32547610", "325476108"};
    for (const std::string& folded : expected)
    {
        const std::string plain = std::string("0123456789").substr(0, folded.size());
        std::string data = plain;
        Orbel::fold(data);
        EXPECT_EQ(data, folded);
        Orbel::unfold(data);
        EXPECT_EQ(data, plain);
    }
}

TEST(Packing, ScramblesByTheOffset)
{
    std::string data("\x00\x00\xff\xff\x01", 5);
    Orbel::scramble(data);
    EXPECT_EQ(data, "\xAA\x55\x55\xAA\xAB");
}

TEST(Packing, UnpacksWhatFitsAndNothingElse)
{
    const std::string plain(100000, 'x');
    const std::string stream = Orbel::pack(plain, plain.size()).value();
    EXPECT_FALSE(Orbel::pack("abc", 3)); // a stream is longer than that

    std::string out;
    for (const std::uint64_t room : {std::uint64_t(plain.size()), std::uint64_t(64) << 20})
    {
        EXPECT_TRUE(Orbel::unpack(stream + "more", room, out));
        EXPECT_EQ(out, plain);
    }
    for (const auto& [bytes, room] : {std::pair(stream, std::uint64_t(plain.size() - 1)),
                                      {stream, (std::uint64_t(64) << 20) + 1},
                                      {stream.substr(0, stream.size() - 1), plain.size()},
                                      {"", plain.size()}})
    {
        out = "former";
        EXPECT_FALSE(Orbel::unpack(bytes, room, out));
        EXPECT_EQ(out, "");
    }
}
