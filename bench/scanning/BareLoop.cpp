#include "Loops.h"

#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace brivane::bench {

namespace {

/// Open as long as something below it waits to be opened.
struct Folder {
    std::shared_ptr<Folder> parent;
    std::string name;
    int descriptor = -1;

    ~Folder()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
};

struct Shared {
    std::mutex mutex;
    std::condition_variable wake;
    std::vector<std::shared_ptr<Folder>> waiting;
    int busy = 0;
    int idle = 0;
    dev_t device = 0;
    Sum sum;
};

constexpr std::size_t lengthAt = 16; // offsets in the kernel's linux_dirent64
constexpr std::size_t nameAt = 19;

void readFolder(const std::shared_ptr<Folder>& folder, dev_t device, std::vector<char>& buffer,
                Sum& sum, std::vector<std::shared_ptr<Folder>>& found)
{
    const int from = folder->parent ? folder->parent->descriptor : AT_FDCWD;
    folder->descriptor =
        ::openat(from, folder->name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    folder->parent.reset();
    if (folder->descriptor < 0)
        return;
    for (;;) {
        const long listed =
            ::syscall(SYS_getdents64, folder->descriptor, buffer.data(), buffer.size());
        if (listed <= 0)
            return;
        for (long at = 0; at < listed;) {
            const char* entry = buffer.data() + at;
            std::uint16_t length = 0;
            std::memcpy(&length, entry + lengthAt, sizeof length);
            at += length;
            const char* name = entry + nameAt;
            if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
                continue;
            ++sum.entries;
            struct stat status;
            if (::fstatat(folder->descriptor, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            if (S_ISREG(status.st_mode))
                sum.bytes += static_cast<std::uint64_t>(status.st_size);
            else if (S_ISDIR(status.st_mode) && status.st_dev == device)
                found.push_back(std::make_shared<Folder>(folder, name));
        }
    }
}

void work(Shared& shared)
{
    std::vector<char> buffer(64 * 1024);
    std::vector<std::shared_ptr<Folder>> found;
    Sum sum;
    std::unique_lock lock(shared.mutex);
    for (;;) {
        while (shared.waiting.empty() && shared.busy > 0) {
            ++shared.idle;
            shared.wake.wait(lock);
            --shared.idle;
        }
        if (shared.waiting.empty())
            break;
        auto folder = std::move(shared.waiting.back());
        shared.waiting.pop_back();
        ++shared.busy;
        lock.unlock();
        readFolder(folder, shared.device, buffer, sum, found);
        folder.reset();
        lock.lock();
        --shared.busy;
        for (auto& one : found)
            shared.waiting.push_back(std::move(one));
        found.clear();
        if (shared.idle > 0)
            shared.wake.notify_all();
    }
    shared.sum.entries += sum.entries;
    shared.sum.bytes += sum.bytes;
}

} // namespace

Sum bareLoop(const char* path)
{
    Shared shared;
    struct stat status;
    if (::stat(path, &status) == 0)
        shared.device = status.st_dev;
    shared.waiting.push_back(std::make_shared<Folder>(nullptr, path));
    std::thread second([&shared] { work(shared); });
    work(shared);
    second.join();
    return shared.sum;
}

} // namespace brivane::bench
