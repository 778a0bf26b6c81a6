// What is wrong with a preset, and whether the effect can use it all the same.
//
// The effect takes what it can and is silent about the rest. Here the same data is looked at beforehand,
// with the words for a person. A small file can unpack to a very large one, and a bank to many of them: all
// that a file unpacks to comes out of one allowance.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lodex
{
constexpr const char* presetID = "QDT_DKS_PRESET";
constexpr const char* bankID = "QDT_DKS_BANK";

struct StoredPreset
{
    std::string chunk;   // a store for the effect; empty if nothing in it can be used
    std::string problem; // empty if there is none
};

class UnpackingAllowance
{
public:
    // False, and nothing taken, if there is no room for so many bytes.
    bool take(std::uint64_t bytes);

private:
    std::uint64_t left = 16u << 20; // bytes: thousands of presets
};

// The words for data of which not all bytes are there.
std::string cutOff(std::uint64_t there, std::uint64_t declared);

// Why a store of that id won't be taken, by its header; empty if it will.
std::string problemOfStore(std::string_view store, const char* id, UnpackingAllowance& allowance);

// A preset's store.
StoredPreset examinePreset(std::string_view store, UnpackingAllowance& allowance);

// Whether bytes hold one of the older product's tagged forms, cut off or enciphered; empty if all of it can
// be read.
std::string problemOfOlderForm(std::string_view bytes);
}
