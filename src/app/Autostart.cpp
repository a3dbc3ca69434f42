#include "app/Autostart.h"

#include "app/UserFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

const QString entryName = QStringLiteral("autostart/io.github.vantora.Vantora.desktop");

/// Whether an entry can hold it: a line's end in it would begin a line of its own.
bool fitsInEntry(const QByteArray& text)
{
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

/// The entry of a program whose path has its backslashes doubled, as the file wants it.
QByteArray entryOf(const QByteArray& program)
{
    QByteArray quoted = program;
    quoted.replace("\\", "\\\\");
    for (const char* special : {"\"", "$", "`"})
        quoted.replace(special, QByteArray("\\\\") + special);
    quoted.replace("%", "%%");
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Vantora\n"
           "Comment=Pace the day: sit, stand, do push-ups\n"
           "Icon=io.github.vantora.Vantora\n"
           "TryExec=" +
           program + "\nExec=\"" + quoted + "\"\n";
}

struct Line
{
    QByteArray key;
    QByteArray value;
};

Line parsed(const QByteArray& line)
{
    const qsizetype sign = line.indexOf('=');
    return sign < 0 ? Line() : Line{line.left(sign).trimmed(), line.mid(sign + 1).trimmed()};
}

/// Whether the entry is as setAutostart() wrote it, for whichever program.
bool isUnchanged(const QByteArray& entry)
{
    for (const QByteArray& line : entry.split('\n')) {
        if (const auto [key, value] = parsed(line); key == "TryExec")
            return entry == entryOf(value);
    }
    return false;
}

/// The keys by which desktops switch an entry off, and the value that does.
bool isSwitch(const Line& line)
{
    return line.key == "Hidden" || line.key == "X-GNOME-Autostart-enabled";
}

bool isOn(const QByteArray& entry)
{
    for (const QByteArray& text : entry.split('\n')) {
        const Line line = parsed(text);
        if (isSwitch(line) && line.value == (line.key == "Hidden" ? "true" : "false"))
            return false;
    }
    return true;
}

QByteArray switched(bool on, const QByteArray& entry)
{
    QByteArrayList lines;
    for (const QByteArray& line : entry.split('\n')) {
        if (isSwitch(parsed(line)))
            continue;
        lines.append(line);
        if (!on && line.trimmed() == "[Desktop Entry]")
            lines.append("Hidden=true");
    }
    return lines.join('\n');
}

QString failed(const char* what, const QFileDevice& file)
{
    return QStringLiteral("cannot %1 %2: %3")
        .arg(QLatin1String(what), file.fileName(), file.errorString());
}

/// What the file holds, nothing where there is none.
QByteArray content(const QString& path, QString& error)
{
    QFile file(path);
    if (!file.exists())
        return {};
    // Opening a pipe would wait for its writer for ever.
    if (!QFileInfo(path).isFile()) {
        error = QStringLiteral("cannot read %1: it is no file").arg(path);
        return {};
    }
    if (!file.open(QFile::ReadOnly)) {
        error = failed("read", file);
        return {};
    }
    return file.readAll();
}

QString write(const QString& path, const QByteArray& entry)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    const bool written = file.open(QSaveFile::WriteOnly) && file.write(entry) == entry.size();
    return file.commit() && written ? QString() : failed("write", file);
}

} // namespace

QString setAutostart(bool on, const QString& program)
{
    const QString path = configFolder() + u'/' + entryName;
    QString error;
    const QByteArray own = content(path, error);
    if (!error.isEmpty())
        return error;
    if (on) {
        if (!fitsInEntry(program.toUtf8()))
            return QStringLiteral("cannot be started by a path with a control character in it");
        if (own.isEmpty() || isUnchanged(own))
            return write(path, entryOf(program.toUtf8().replace("\\", "\\\\")));
        return isOn(own) ? QString() : write(path, switched(true, own));
    }
    // With a link nothing is lost but the link.
    QFile file(path);
    if ((isUnchanged(own) || QFileInfo(path).isSymLink()) && !file.remove())
        return failed("remove", file);
    // What is left is the user's own, or the administrator's for everybody.
    const QByteArray left = content(configFile(entryName), error);
    if (!error.isEmpty() || left.isEmpty() || !isOn(left))
        return error;
    return write(path, switched(false, left));
}
