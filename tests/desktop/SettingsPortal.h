#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

/// The settings portal of a session bus, with the settings that a test gives it.
class SettingsPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit SettingsPortal(const QString& busAddress);
    ~SettingsPortal() override;

    /// Comes up with the settings that it has.
    void start();

    /// Changes a setting and tells everybody.
    void set(const QString& group, const QString& key, const QVariant& value);

    /// The groups that it was asked for, one text for each question.
    QStringList questions() const { return m_questions; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    QDBusConnection m_bus;
    QMap<QString, QVariantMap> m_groups;
    QStringList m_questions;
};
