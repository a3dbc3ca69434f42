#pragma once

#include <QByteArray>
#include <QtEndian>

/// Settings in the format of XSETTINGS, as a settings manager of X11 gives them out.
class SettingsData
{
public:
    /// `serial` grows with each change of a value: some programs take no other one.
    explicit SettingsData(bool isBigEndian = false, quint32 serial = 1)
        : m_isBigEndian(isBigEndian)
        , m_serial(serial)
    {}

    void add(const QByteArray& name, qint32 value)
    {
        begin(0, name);
        append(value);
    }

    void add(const QByteArray& name, const QByteArray& text)
    {
        begin(1, name);
        append(static_cast<quint32>(text.size()));
        appendFilled(text);
    }

    void addColor(const QByteArray& name)
    {
        begin(2, name);
        m_settings.append(8, '\x7F');
    }

    QByteArray bytes() const
    {
        SettingsData head(m_isBigEndian);
        head.m_settings = QByteArray(m_isBigEndian ? "\1\0\0\0" : "\0\0\0\0", 4);
        head.append(m_serial);
        head.append(m_count);
        return head.m_settings + m_settings;
    }

private:
    template <typename Number>
    void append(Number number)
    {
        const Number ordered = m_isBigEndian ? qToBigEndian(number) : qToLittleEndian(number);
        m_settings.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
    }

    void appendFilled(const QByteArray& text)
    {
        m_settings.append(text);
        m_settings.append((4 - text.size() % 4) % 4, '\0');
    }

    void begin(char kind, const QByteArray& name)
    {
        m_settings.append(kind).append('\0');
        append(static_cast<quint16>(name.size()));
        appendFilled(name);
        append(m_serial);
        ++m_count;
    }

    bool m_isBigEndian;
    quint32 m_serial;
    quint32 m_count = 0;
    QByteArray m_settings;
};
