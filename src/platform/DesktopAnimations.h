#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

/// Whether the user wants things to move on this desktop, as its accessibility settings say. Every
/// desktop keeps that elsewhere: the settings portal answers for those that have one, the settings
/// manager of X11 for others, as MATE. Without an answer things may move.
class DesktopAnimations : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal and follows it from then on. Returns at once.
    void watchPortal(QDBusConnection bus);

    /// Asks the settings manager of X11 and follows it from then on.
    void watchXSettings();

    bool areEnabled() const
    {
        return !m_reducedMotion && m_gnomeEnabled && m_kdeEnabled && m_gtkEnabled;
    }

Q_SIGNALS:
    void changed(bool enabled);

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void readAll(const QDBusConnection& bus);
    void take(const QString& group, const QString& key, const QVariant& value);

    bool m_reducedMotion = false;
    bool m_gnomeEnabled = true;
    bool m_kdeEnabled = true;
    bool m_gtkEnabled = true;
};
