#pragma once

#include "log/FileSystem.h"

/// The real file system without the waiting for the disk, for tests that are not about it.
class QuickFileSystem : public FileSystem
{
public:
    int sync(int) override { return 0; }
};
