// SPDX-License-Identifier: GPL-3.0-or-later
// Linked with one fuzz target: its seed corpus, run as an ordinary test.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);

TEST(Corpus, EveryFileKeepsThePromisesOfItsTarget)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(LODEX_CORPUS))
    {
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
        ASSERT_TRUE(file.good() || file.eof());
        LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        ++count;
    }
    EXPECT_GT(count, 0) << "no corpus in " LODEX_CORPUS;
}
