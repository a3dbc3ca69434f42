#include "panel/StepperAccessible.h"

#include "panel/Stepper.h"

#include <QAccessibleWidget>

#include <algorithm>
#include <cmath>

namespace {

class StepperAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit StepperAccessible(Stepper* stepper)
        : QAccessibleWidget(stepper, QAccessible::SpinBox, stepper->accessibleName())
    {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? stepper().text() : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return stepper().value(); }
    QVariant minimumValue() const override { return stepper().range().least; }
    QVariant maximumValue() const override { return stepper().range().most; }
    QVariant minimumStepSize() const override { return stepper().range().step; }

    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const double wanted = value.toDouble(&isNumber);
        const StepRange& range = stepper().range();
        if (!isNumber || std::isnan(wanted))
            return;
        stepper().request(qRound64(
            std::clamp(wanted, static_cast<double>(range.least), static_cast<double>(range.most))));
    }

private:
    Stepper& stepper() const { return *static_cast<Stepper*>(widget()); }
};

QAccessibleInterface* stepperInterface(const QString&, QObject* object)
{
    auto* stepper = qobject_cast<Stepper*>(object);
    return stepper ? new StepperAccessible(stepper) : nullptr;
}

} // namespace

void installStepperAccessibility()
{
    static const bool installed = (QAccessible::installFactory(stepperInterface), true);
    Q_UNUSED(installed)
}

void announceStepperValue(Stepper& stepper)
{
    QAccessibleValueChangeEvent event(&stepper, stepper.value());
    QAccessible::updateAccessibility(&event);
}
