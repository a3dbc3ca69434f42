#pragma once

#include "LogFolder.h"

#include <filesystem>
#include <unistd.h>

/// While it lives, permissions hold: a test run by root goes on as a plain user, who owns the
/// folder and what is in it.
class Unprivileged
{
public:
    explicit Unprivileged(const LogFolder& folder)
    {
        if (m_before != 0)
            return;
        const std::string path = folder.path().toStdString();
        EXPECT_EQ(::lchown(path.c_str(), plainUser, plainUser), 0);
        for (const auto& item : std::filesystem::recursive_directory_iterator(path))
            EXPECT_EQ(::lchown(item.path().c_str(), plainUser, plainUser), 0);
        EXPECT_EQ(::seteuid(plainUser), 0);
    }

    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;
    ~Unprivileged() { EXPECT_EQ(::seteuid(m_before), 0); }

private:
    static constexpr uid_t plainUser = 65534;
    uid_t m_before = ::geteuid();
};
