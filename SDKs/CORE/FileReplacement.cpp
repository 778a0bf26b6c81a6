#include "CORE/FileReplacement.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/file.h>
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

fs::path folderOf(const fs::path& file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// The hidden files are called ".save-", the number of the process, "-", a count. Whoever writes one holds its
// lock, which ends with the process: the name alone would not tell, since numbers of processes come again.
constexpr std::string_view hiddenPrefix = ".save-";

bool isHiddenName(std::string_view name)
{
    constexpr std::string_view digits = "0123456789";
    if (!name.starts_with(hiddenPrefix))
        return false;
    name.remove_prefix(hiddenPrefix.size());
    const size_t dash = name.find_first_not_of(digits);
    return dash != name.npos && dash > 0 && name[dash] == '-' && dash + 1 < name.size() &&
           name.find_first_not_of(digits, dash + 1) == name.npos;
}

// Takes the lock of an open hidden file and answers whether the file still has its name. Where there are no
// locks, it is taken for one's own if the file is.
bool holdsLock(int descriptor, bool own)
{
    struct stat info;
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (!own || errno == EWOULDBLOCK))
        return false;
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink > 0;
}

void removeIfLeftBehind(const fs::path& file)
{
    const int descriptor = open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return;
    if (holdsLock(descriptor, false))
        unlink(file.c_str());
    close(descriptor);
}

// A process that was killed in the middle of a save left its hidden file.
void removeLeftovers(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        if (isHiddenName(at->path().filename().native()))
            removeIfLeftBehind(at->path());
}

// Opens a new hidden file in the folder, with the permissions of any new file, and locks it; -1 if that
// fails.
int createBeside(const fs::path& target, std::string& name)
{
    static std::atomic<unsigned> counter{0};
    constexpr int attempts = 1000; // others in this process, or what a crash left, may have the name
    for (int i = 0; i < attempts; ++i)
    {
        const auto file =
            std::string(hiddenPrefix) + std::to_string(getpid()) + "-" + std::to_string(counter++);
        name = (target.parent_path() / file).string();
        const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST)
            return -1;
        if (descriptor >= 0 && holdsLock(descriptor, true))
            return descriptor;
        if (descriptor >= 0) // someone who clears up was faster than the lock
            close(descriptor);
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
    const int descriptor = open(folderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
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

    removeLeftovers(folderOf(*resolved));
    std::string name;
    lock = createBeside(*resolved, name);
    if (lock < 0)
        return;
    temporary = name;
    if (exists && !copyPermissions(lock, former))
        complete = false;
    const int descriptor = fcntl(lock, F_DUPFD_CLOEXEC, 0); // the lock has to outlive the stream
    stream = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
    if (descriptor >= 0 && !stream)
        close(descriptor);
}

FileReplacement::~FileReplacement()
{
    if (stream)
        std::fclose(stream);
    if (!temporary.empty())
        unlink(temporary.c_str());
    if (lock >= 0)
        close(lock);
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
