#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A folder of one test's own, with the log file that the test is about.
class LogFolder
{
public:
    LogFolder() { EXPECT_TRUE(m_folder.isValid()); }

    QString file(const QString& name = QStringLiteral("sessions.json")) const
    {
        return m_folder.filePath(name);
    }

    QString path() const { return m_folder.path(); }

    /// What stands in the folder, hidden files too.
    QStringList names() const
    {
        return QDir(path()).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

/// What the file at `path` holds, as text that a failed comparison shows readably.
inline std::string contentOf(const QString& path)
{
    QFile file(path);
    const bool isOpen = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
    EXPECT_TRUE(isOpen) << path.toStdString();
    return isOpen ? file.readAll().toStdString() : std::string();
}

inline void putContent(const QString& path, std::string_view content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(content.data(), static_cast<qint64>(content.size())),
              static_cast<qint64>(content.size()));
}
