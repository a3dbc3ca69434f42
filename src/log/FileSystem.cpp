#include "log/FileSystem.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

int FileSystem::open(const QByteArray& path, int flags, mode_t mode)
{
    return ::open(path.constData(), flags, mode);
}

int FileSystem::lock(int file)
{
    return ::flock(file, LOCK_EX | LOCK_NB);
}

int FileSystem::changeMode(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileSystem::truncate(int file)
{
    return ::ftruncate(file, 0);
}

ssize_t FileSystem::write(int file, const char* data, size_t size)
{
    return ::write(file, data, size);
}

int FileSystem::beginSync(int file, off_t from, off_t size)
{
    return ::sync_file_range(file, from, size, SYNC_FILE_RANGE_WRITE);
}

int FileSystem::sync(int file)
{
    return ::fsync(file);
}

int FileSystem::close(int file)
{
    return ::close(file);
}

int FileSystem::rename(const QByteArray& from, const QByteArray& to)
{
    return ::rename(from.constData(), to.constData());
}

int FileSystem::remove(const QByteArray& path)
{
    return ::unlink(path.constData());
}

bool FileSystem::makeFolder(const QByteArray& path)
{
    return QDir().mkpath(QFile::decodeName(path));
}
