#include "panel/AboutView.h"

#include "panel/Branding.h"
#include "panel/LinkButton.h"
#include "panel/LogoBanner.h"
#include "panel/PanelStyle.h"
#include "panel/TextLabel.h"

#include <QCoreApplication>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int padding = 12; ///< logical pixels, the rows' own included

TextLabel* makeCredit()
{
    auto* credit = new TextLabel(
        QStringLiteral("Made by %1. Vantora paces a working day: sit and focus, stand and go on, "
                       "drop for a few push-ups, and start again. It is free software.")
            .arg(branding::maker()),
        panelStyle::calloutSize, QFont::Normal, TextLabel::Shade::secondary);
    credit->setWordWrap(true);
    credit->setAlignment(Qt::AlignHCenter);
    return credit;
}

LinkButton* makeLink()
{
    const QUrl address(branding::linkAddress(), QUrl::StrictMode);
    if (!address.isValid() || address.scheme().isEmpty())
        qFatal("the link of the About section has no valid address");
    return new LinkButton(branding::linkTitle(), address);
}

} // namespace

AboutView::AboutView(const QString& logo)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(12);
    if (const QImage picture(logo); !picture.isNull())
        column->addWidget(new LogoBanner(picture));
    column->addWidget(new TextLabel(QStringLiteral("Vantora v") + appVersion(),
                                    panelStyle::headlineSize, QFont::Bold,
                                    TextLabel::Shade::primary),
                      0, Qt::AlignHCenter);
    column->addWidget(makeCredit());
    column->addWidget(makeLink(), 0, Qt::AlignHCenter);
}

QString AboutView::appVersion()
{
    const QString version = QCoreApplication::applicationVersion();
    return version.isEmpty() ? QStringLiteral("1.0") : version;
}
