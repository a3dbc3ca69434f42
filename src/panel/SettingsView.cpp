#include "panel/SettingsView.h"

#include "core/NextPass.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace {

/// The bounds of a setting, and how far one press moves it.
struct Range
{
    qint64 least = 1;
    qint64 most = 1;
    qint64 step = 1;
};

constexpr Range minutesRange{1, 240, 1};
constexpr Range pushupsRange{1, 500, 5};

/// A value with a button to lower and one to raise it. A stored value outside the range is shown
/// as it is until a press.
void addStepper(QFormLayout& form, TimerEngine& engine, Published<qint64>& value, Range range,
                const QString& title, const QString& unit)
{
    auto* row = new QHBoxLayout;
    auto* text = new QLabel;
    row->addWidget(text, 1);
    const auto addButton = [&](const QString& sign, const QString& name, qint64 step) {
        auto* button = new QToolButton;
        button->setText(sign);
        button->setAccessibleName(name + QLatin1Char(' ') + title);
        button->setAutoRepeat(true);
        QObject::connect(button, &QToolButton::clicked, button, [&value, range, step] {
            value = std::clamp(std::clamp(value(), range.least, range.most) + step, range.least,
                               range.most);
        });
        row->addWidget(button);
    };
    addButton(QStringLiteral("−"), QStringLiteral("Less"), -range.step);
    addButton(QStringLiteral("+"), QStringLiteral("More"), range.step);
    form.addRow(title, row);

    const auto read = [text, &value, unit] {
        text->setText(QString::number(value()) + QLatin1Char(' ') + unit);
    };
    read();
    onNextPass(engine, text, read);
}

} // namespace

SettingsView::SettingsView(TimerEngine& engine)
{
    auto* form = new QFormLayout(this);
    auto* compact = new QCheckBox(QStringLiteral("Compact widget"));
    form->addRow(compact);
    const auto readCompact = [compact, &engine] { compact->setChecked(engine.compactMode()); };
    readCompact();
    onNextPass(engine, compact, readCompact);
    connect(compact, &QCheckBox::clicked, this, [&engine](bool on) { engine.compactMode = on; });

    addStepper(*form, engine, engine.sittingMinutes, minutesRange,
               QStringLiteral("Deep Work (seated)"), QStringLiteral("min"));
    addStepper(*form, engine, engine.standingMinutes, minutesRange, QStringLiteral("Stand Up"),
               QStringLiteral("min"));
    addStepper(*form, engine, engine.pushupCount, pushupsRange, QStringLiteral("Push-ups"),
               QStringLiteral("reps"));
}
