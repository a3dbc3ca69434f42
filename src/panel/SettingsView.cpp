#include "panel/SettingsView.h"

#include "core/NextPass.h"
#include "panel/AboutView.h"
#include "panel/Branding.h"
#include "panel/FormSection.h"
#include "panel/Stepper.h"
#include "panel/Switch.h"
#include "panel/ValueLabel.h"

#include <QVBoxLayout>

namespace {

constexpr StepRange minutesRange{1, 240, 1};
constexpr StepRange pushupsRange{1, 500, 5};

// Logical pixels.
constexpr int sideMargin = 20;
constexpr int sectionSpacing = 16;

} // namespace

SettingsView::SettingsView(TimerEngine& engine)
    : m_engine(engine)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(sideMargin, sectionSpacing, sideMargin, sideMargin);
    column->setSpacing(sectionSpacing);
    const auto addSection = [&](const QString& header, const QString& footer = {}) -> auto&
    {
        auto* section = new FormSection(header, footer);
        column->addWidget(section);
        return *section;
    };

    addCompactSwitch(addSection(QStringLiteral("Appearance")));

    FormSection& durations = addSection(
        QStringLiteral("Phase durations"),
        QStringLiteral(
            "Changing the running phase's duration keeps the time you've already put in."));
    addStepper(durations, QStringLiteral("chair.lounge"), QStringLiteral("Deep Work (seated)"),
               QStringLiteral("min"), minutesRange, engine.sittingMinutes);
    addStepper(durations, QStringLiteral("figure.stand"), QStringLiteral("Stand Up"),
               QStringLiteral("min"), minutesRange, engine.standingMinutes);

    addStepper(addSection(QStringLiteral("Exercise")),
               QStringLiteral("figure.strengthtraining.traditional"), QStringLiteral("Push-ups"),
               QStringLiteral("reps"), pushupsRange, engine.pushupCount);

    addSection(QStringLiteral("About")).addRow(new AboutView(branding::banner()));

    onNextPass(engine, this, [this] {
        if (isVisible())
            Q_EMIT reread();
    });
    Q_EMIT reread();
}

void SettingsView::showEvent(QShowEvent*)
{
    Q_EMIT reread();
}

void SettingsView::addCompactSwitch(FormSection& section)
{
    const QString title = QStringLiteral("Compact widget");
    auto* control = new Switch(title);
    section.addRow(QStringLiteral("rectangle.compress.vertical"), title, {control});
    // Assistive technology toggles it without a click.
    connect(control, &QCheckBox::toggled, this, [this](bool on) {
        if (on != m_engine.compactMode())
            m_engine.compactMode = on;
    });
    connect(this, &SettingsView::reread, control,
            [this, control] { control->setChecked(m_engine.compactMode()); });
}

void SettingsView::addStepper(FormSection& section, const QString& symbol, const QString& title,
                              const QString& unit, StepRange range, Published<qint64>& value)
{
    auto* text = new ValueLabel;
    auto* control = new Stepper(title, range, unit);
    section.addRow(symbol, title, {text, control});
    connect(control, &Stepper::valueRequested, this, [&value](qint64 wanted) { value = wanted; });
    connect(this, &SettingsView::reread, control, [&value, text, control] {
        control->setValue(value());
        text->setText(control->text());
    });
}
