#pragma once

#include "core/TimerEngine.h"
#include "panel/StepRange.h"

#include <QWidget>

class FormSection;

/// The Settings tab: a form whose controls write the engine's values at once, and the program's
/// own story at its foot.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsView(TimerEngine& engine);

Q_SIGNALS:
    /// The engine may have other values; the controls take them.
    void reread();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addCompactSwitch(FormSection& section);
    void addStepper(FormSection& section, const QString& symbol, const QString& title,
                    const QString& unit, StepRange range, Published<qint64>& value);

    TimerEngine& m_engine;
};
