#include "widget/WidgetAccessible.h"

#include "widget/WidgetView.h"

#include <QAccessibleWidget>

namespace {

class WidgetAccessible : public QAccessibleWidget
{
public:
    explicit WidgetAccessible(WidgetView* view)
        : QAccessibleWidget(view, QAccessible::Grouping)
    {}

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? view().spokenState() : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override
    {
        return view().canBeTapped() ? QStringList{pressAction()} : QStringList{};
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            view().tap();
    }

private:
    WidgetView& view() const { return *static_cast<WidgetView*>(widget()); }
};

QAccessibleInterface* widgetInterface(const QString&, QObject* object)
{
    auto* view = qobject_cast<WidgetView*>(object);
    return view ? new WidgetAccessible(view) : nullptr;
}

} // namespace

void installWidgetAccessibility()
{
    static const bool installed = (QAccessible::installFactory(widgetInterface), true);
    Q_UNUSED(installed)
}

void announceState(WidgetView& view)
{
    QAccessibleEvent renamed(&view, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent said(&view, view.spokenState());
    QAccessible::updateAccessibility(&said);
#endif
}
