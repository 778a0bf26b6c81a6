// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of a test's own, which goes away with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

class TempFolder
{
public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "lodex-test-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~TempFolder() { std::filesystem::remove_all(path); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The full path of a name in here.
    std::string operator/(const std::string& name) const { return (path / name).string(); }
    std::string put(const std::string& name, const std::string& content) const
    {
        std::ofstream(path / name, std::ios::binary) << content;
        return *this / name;
    }
    std::string content(const std::string& name) const
    {
        std::ifstream file(path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // The names of all entries, hidden ones too.
    std::set<std::string> names() const
    {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path))
            found.insert(entry.path().filename().string());
        return found;
    }

    std::filesystem::path path;
};

// An environment variable with another value as long as the object lives; null takes it away.
class TempEnvironment
{
public:
    TempEnvironment(const char* variable, const char* value) : name(variable)
    {
        if (const char* before = std::getenv(variable))
            former = before, wasSet = true;
        set(value);
    }
    ~TempEnvironment() { set(wasSet ? former.c_str() : nullptr); }
    TempEnvironment(const TempEnvironment&) = delete;
    TempEnvironment& operator=(const TempEnvironment&) = delete;

private:
    void set(const char* value) { value ? setenv(name, value, 1) : unsetenv(name); }

    const char* name;
    std::string former;
    bool wasSet = false;
};
