#include "CORE/FileReplacement.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace Core
{
namespace
{
// The path with symbolic links at its end followed, also to a file that does not exist yet. Nothing if
// they run in a circle.
std::optional<fs::path> followLinks(fs::path path)
{
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i)
    {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / next; // an absolute next stands alone
    }
    return {};
}

// Opens a new hidden file in the folder, with the permissions of any new file; -1 if that fails.
int createBeside(const fs::path& target, std::string& name)
{
    static std::atomic<unsigned> counter{0};
    constexpr int attempts = 1000; // others in this process, or what a crash left, may have the name
    for (int i = 0; i < attempts; ++i)
    {
        const auto file = ".save-" + std::to_string(getpid()) + "-" + std::to_string(counter++);
        name = (target.parent_path() / file).string();
        const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

// Owner first: changing it would take back some of the permissions. Only root may give a file away.
bool copyPermissions(int descriptor, const struct stat& former)
{
    [[maybe_unused]] const int given = fchown(descriptor, former.st_uid, former.st_gid);
    return fchmod(descriptor, former.st_mode & 07777) == 0;
}

void syncFolderOf(const fs::path& file)
{
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}
}

FileReplacement::FileReplacement(const char* path)
{
    const auto resolved = path && *path ? followLinks(path) : std::nullopt;
    if (!resolved)
        return;
    target = resolved->string();

    struct stat former;
    const bool exists = stat(target.c_str(), &former) == 0;
    if (exists && (!S_ISREG(former.st_mode) || access(target.c_str(), W_OK) != 0))
        return;

    std::string name;
    const int descriptor = createBeside(*resolved, name);
    if (descriptor < 0)
        return;
    temporary = name;
    if (exists && !copyPermissions(descriptor, former))
        complete = false;
    stream = fdopen(descriptor, "wb");
    if (!stream)
        close(descriptor);
}

FileReplacement::~FileReplacement()
{
    if (stream)
        std::fclose(stream);
    if (!temporary.empty())
        unlink(temporary.c_str());
}

bool FileReplacement::write(const void* data, unsigned long long size)
{
    if (!stream || (!data && size > 0) || (size > 0 && std::fwrite(data, 1, size, stream) != size))
        complete = false;
    return complete;
}

bool FileReplacement::flushToDisk()
{
    const bool flushed = std::fflush(stream) == 0 && fsync(fileno(stream)) == 0;
    const bool closed = std::fclose(stream) == 0;
    stream = nullptr;
    return flushed && closed;
}

bool FileReplacement::commit()
{
    if (!stream || !complete || !flushToDisk())
        return false;
    if (std::rename(temporary.c_str(), target.c_str()) != 0)
        return false;
    temporary.clear();
    syncFolderOf(target);
    return true;
}
}
