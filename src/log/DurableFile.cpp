#include "log/DurableFile.h"

#include "log/FileSystem.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/// Symbolic links in a row that are followed, as many as the system itself follows.
constexpr int mostLinks = 40;

/// A file that closes itself, unless closing is asked for to see how it went.
class OpenFile
{
public:
    OpenFile(FileSystem& fileSystem, const QByteArray& path, int flags, mode_t mode = 0)
        : m_fileSystem(fileSystem)
        , m_file(fileSystem.open(path, flags | O_CLOEXEC, mode))
    {}

    OpenFile(OpenFile&& other) noexcept
        : m_fileSystem(other.m_fileSystem)
        , m_file(std::exchange(other.m_file, -1))
    {}

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(); }

    explicit operator bool() const { return m_file >= 0; }
    int descriptor() const { return m_file; }

    bool close()
    {
        const int file = std::exchange(m_file, -1);
        return file < 0 || m_fileSystem.close(file) == 0;
    }

private:
    FileSystem& m_fileSystem;
    int m_file;
};

QByteArray folderOf(const QByteArray& path)
{
    return path.left(path.lastIndexOf('/'));
}

QByteArray nameIn(const QByteArray& path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

/// The folder with no link in its path any more; nothing when it does not exist.
std::optional<QByteArray> realFolder(const QByteArray& folder)
{
    const std::unique_ptr<char, decltype(&std::free)> real(
        ::realpath(folder.isEmpty() ? "/" : folder.constData(), nullptr), &std::free);
    if (!real)
        return std::nullopt;
    return QByteArray(real.get());
}

/// The absolute path that the links at `path` lead to in the end, whether or not a file is there,
/// or even a folder for it. Nothing when they go in a circle.
std::optional<QByteArray> followLinks(QByteArray path)
{
    for (int links = 0; links <= mostLinks; ++links) {
        const auto folder = realFolder(folderOf(path));
        if (!folder)
            return path;
        path = *folder + '/' + nameIn(path);
        std::array<char, PATH_MAX> target{};
        const ssize_t length = ::readlink(path.constData(), target.data(), target.size());
        if (length < 0)
            return path;
        // A relative target starts from the folder that the link really is in.
        const QByteArray next(target.data(), length);
        path = next.startsWith('/') ? next : *folder + '/' + next;
    }
    return std::nullopt;
}

/// Opens the draft, in place of whatever else a killed process or anybody may have left there.
OpenFile openDraft(FileSystem& fileSystem, const QByteArray& path)
{
    // Not waiting keeps a pipe of that name from waiting for its reader.
    constexpr int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK;
    OpenFile file(fileSystem, path, flags, 0666);
    const bool isInTheWay = errno == EACCES || errno == ELOOP || errno == ENXIO;
    if (file || !isInTheWay)
        return file;
    fileSystem.remove(path);
    return OpenFile(fileSystem, path, flags, 0666);
}

/// Takes the file for this process alone. Another process may have put it in its final place
/// between our opening and our locking it: then it is no longer the one at `path`.
bool lockFile(FileSystem& fileSystem, const OpenFile& file, const QByteArray& path)
{
    // Where files cannot be locked at all, never to save would be worse.
    if (fileSystem.lock(file.descriptor()) != 0 && errno != ENOLCK && errno != EOPNOTSUPP)
        return false;
    struct stat locked = {};
    struct stat named = {};
    return ::fstat(file.descriptor(), &locked) == 0 && ::lstat(path.constData(), &named) == 0 &&
           S_ISREG(locked.st_mode) && locked.st_ino == named.st_ino &&
           locked.st_dev == named.st_dev;
}

bool keepMode(FileSystem& fileSystem, const OpenFile& file, const QByteArray& of)
{
    struct stat old = {};
    if (::stat(of.constData(), &old) != 0)
        return true; // there is no old file
    return fileSystem.changeMode(file.descriptor(), old.st_mode & 07777) == 0;
}

bool writeAll(FileSystem& fileSystem, const OpenFile& file, QByteArrayView content)
{
    while (!content.isEmpty()) {
        const ssize_t count = fileSystem.write(file.descriptor(), content.data(),
                                               static_cast<size_t>(content.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        content = content.sliced(count);
    }
    return true;
}

/// Writes all that `produce` gives out, and has the disk begin with it while the rest is produced.
bool writePieces(FileSystem& fileSystem, const OpenFile& file,
                 const std::function<bool(const WritePiece&)>& produce)
{
    off_t written = 0;
    return produce([&](QByteArrayView piece) {
        if (!writeAll(fileSystem, file, piece))
            return false;
        fileSystem.beginSync(file.descriptor(), written, piece.size()); // sync() is what counts
        written += piece.size();
        return true;
    });
}

bool syncFolder(FileSystem& fileSystem, const QByteArray& path)
{
    OpenFile folder(fileSystem, path, O_RDONLY | O_DIRECTORY);
    return folder && fileSystem.sync(folder.descriptor()) == 0;
}

} // namespace

std::optional<QByteArray> readFile(const QString& path)
{
    // Opening a pipe of that name would wait for its writer for ever.
    QFile file(path);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

bool replaceFile(FileSystem& fileSystem, const QString& path,
                 const std::function<bool(const WritePiece&)>& produce)
{
    const auto target = followLinks(QFile::encodeName(QFileInfo(path).absoluteFilePath()));
    if (!target)
        return false;
    const QByteArray folder = folderOf(*target);
    if (!fileSystem.makeFolder(folder))
        return false;
    // One fixed name and a lock on it: a killed process leaves at most one such file, and the next
    // save uses it again.
    const QByteArray draft = folder + "/." + nameIn(*target) + ".new";
    OpenFile file = openDraft(fileSystem, draft);
    if (!file || !lockFile(fileSystem, file, draft))
        return false;
    if (fileSystem.truncate(file.descriptor()) != 0 || !keepMode(fileSystem, file, *target) ||
        !writePieces(fileSystem, file, produce) || fileSystem.sync(file.descriptor()) != 0 ||
        fileSystem.rename(draft, *target) != 0) {
        fileSystem.remove(draft);
        return false;
    }
    // Closed only now: the lock keeps other processes off until the draft is in its place.
    const bool isClosed = file.close();
    return syncFolder(fileSystem, folder) && isClosed;
}
