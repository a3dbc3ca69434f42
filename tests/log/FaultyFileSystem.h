#pragma once

#include "QuickFileSystem.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// A file system in which a chosen call fails.
class FaultyFileSystem : public QuickFileSystem
{
public:
    /// The calls so far, by name; "sync folder" and "open folder" are told from those of a file.
    std::vector<std::string> calls;
    /// The number in `calls` of the one that fails.
    std::optional<std::size_t> faultAt;
    int faultError = EIO;
    /// Whether removing fails as well.
    bool removingFails = false;
    /// Run before and after each call.
    std::function<void()> look = [] {};
    /// Files opened and not closed.
    int openFiles = 0;
    /// The paths of the files opened to be written.
    std::vector<QByteArray> written;

    int open(const QByteArray& path, int flags, mode_t mode) override
    {
        const bool folder = (flags & O_DIRECTORY) != 0;
        const int file = call(folder ? "open folder" : "open",
                              [&] { return FileSystem::open(path, flags, mode); });
        if (file >= 0) {
            ++openFiles;
            if (folder)
                m_folder = file;
            else
                written.push_back(path);
        }
        return file;
    }
    int lock(int file) override
    {
        return call("lock", [&] { return FileSystem::lock(file); });
    }
    int changeMode(int file, mode_t mode) override
    {
        return call("change mode", [&] { return FileSystem::changeMode(file, mode); });
    }
    int truncate(int file) override
    {
        return call("truncate", [&] { return FileSystem::truncate(file); });
    }
    ssize_t write(int file, const char* data, size_t size) override
    {
        return call("write", [&] { return FileSystem::write(file, data, size); });
    }
    int sync(int file) override
    {
        return call(file == m_folder ? "sync folder" : "sync",
                    [&] { return QuickFileSystem::sync(file); });
    }
    int close(int file) override
    {
        // As in the system, the file is closed also when closing reports an error.
        --openFiles;
        const int result = FileSystem::close(file);
        const bool folder = file == std::exchange(m_folder, file == m_folder ? -1 : m_folder);
        return call(folder ? "close folder" : "close", [&] { return result; });
    }
    int rename(const QByteArray& from, const QByteArray& to) override
    {
        return call("rename", [&] { return FileSystem::rename(from, to); });
    }
    int remove(const QByteArray& path) override
    {
        if (!removingFails)
            return FileSystem::remove(path);
        errno = EIO;
        return -1;
    }
    bool makeFolder(const QByteArray& path) override
    {
        return call("make folder", [&] { return FileSystem::makeFolder(path) ? 0 : -1; }) == 0;
    }

private:
    template <typename Real>
    auto call(const char* name, Real real) -> decltype(real())
    {
        look();
        calls.emplace_back(name);
        if (faultAt == calls.size() - 1) {
            errno = faultError;
            return -1;
        }
        const auto result = real();
        const int error = errno;
        look();
        errno = error;
        return result;
    }

    int m_folder = -1;
};
