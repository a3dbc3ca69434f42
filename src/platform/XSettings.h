#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QByteArrayView>
#include <QObject>

#include <cstdint>
#include <optional>

/// An integer among the settings in `data`, in the format of XSETTINGS. None where there is no such
/// integer, or where the data before it is malformed.
std::optional<int32_t> integerSetting(QByteArrayView data, QByteArrayView name);

/// The settings that an X11 desktop's settings manager keeps for all programs (XSETTINGS). Without
/// a manager, and on other window systems, there are none.
class XSettings : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit XSettings(QObject* parent);

    std::optional<int32_t> integer(QByteArrayView name) const
    {
        return integerSetting(m_data, name);
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

Q_SIGNALS:
    /// Any of them may have changed.
    void changed();

private:
    void useManager();
    void read();

    uint32_t m_selection = 0; ///< what the manager owns
    uint32_t m_property = 0;  ///< where it keeps the settings, on its window
    uint32_t m_manager = 0;   ///< its window; 0: none
    QByteArray m_data;
};
