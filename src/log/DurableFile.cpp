#include "log/DurableFile.h"

#include "log/FileSystem.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
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

QString followLinks(const QString& path)
{
    QFileInfo info(path);
    for (int links = 0; links < mostLinks && info.isSymLink(); ++links)
        info.setFile(info.symLinkTarget());
    return info.absoluteFilePath();
}

/// Takes the file for this process alone. Another process may have put it in its final place
/// between our opening and our locking it: then it is no longer the one at `path`.
bool lockFile(FileSystem& fileSystem, const OpenFile& file, const QByteArray& path)
{
    if (fileSystem.lock(file.descriptor()) != 0)
        return false;
    struct stat locked = {};
    struct stat named = {};
    return ::fstat(file.descriptor(), &locked) == 0 && ::lstat(path.constData(), &named) == 0 &&
           locked.st_ino == named.st_ino && locked.st_dev == named.st_dev;
}

bool keepMode(FileSystem& fileSystem, const OpenFile& file, const QByteArray& of)
{
    struct stat old = {};
    if (::stat(of.constData(), &old) != 0)
        return true; // there is no old file
    return fileSystem.changeMode(file.descriptor(), old.st_mode & 07777) == 0;
}

bool writeAll(FileSystem& fileSystem, const OpenFile& file, const QByteArray& content)
{
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count = fileSystem.write(file.descriptor(), content.constData() + written,
                                               static_cast<size_t>(content.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
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

bool replaceFile(FileSystem& fileSystem, const QString& path, const QByteArray& content)
{
    const QFileInfo target(followLinks(path));
    const QByteArray folder = QFile::encodeName(target.absolutePath());
    const QByteArray name = QFile::encodeName(target.absoluteFilePath());
    // One fixed name and a lock on it: a killed process leaves at most one such file, and the next
    // save uses it again.
    const QByteArray draft = folder + "/." + QFile::encodeName(target.fileName()) + ".new";
    if (!fileSystem.makeFolder(folder))
        return false;

    OpenFile file(fileSystem, draft, O_WRONLY | O_CREAT | O_NOFOLLOW, 0666);
    if (!file || !lockFile(fileSystem, file, draft))
        return false;
    if (fileSystem.truncate(file.descriptor()) != 0 || !keepMode(fileSystem, file, name) ||
        !writeAll(fileSystem, file, content) || fileSystem.sync(file.descriptor()) != 0 ||
        !file.close() || fileSystem.rename(draft, name) != 0) {
        fileSystem.remove(draft);
        return false;
    }
    return syncFolder(fileSystem, folder);
}
