#pragma once

#include <QByteArray>

#include <sys/types.h>

/// The calls to the file system that a durable save is made of, each as the system has it: −1 and
/// errno report a failure. They stand here so that each of them can be made to fail.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    virtual int open(const QByteArray& path, int flags, mode_t mode);
    /// Takes the file for this process alone, or fails at once.
    virtual int lock(int file);
    virtual int changeMode(int file, mode_t mode);
    virtual int truncate(int file);
    virtual ssize_t write(int file, const char* data, size_t size);
    /// Has the disk begin with these bytes of the file, and does not wait for it.
    virtual int beginSync(int file, off_t from, off_t size);
    virtual int sync(int file);
    virtual int close(int file);
    virtual int rename(const QByteArray& from, const QByteArray& to);
    virtual int remove(const QByteArray& path);
    /// Makes the folder with all missing ones above it.
    virtual bool makeFolder(const QByteArray& path);
};
