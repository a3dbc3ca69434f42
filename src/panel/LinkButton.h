#pragma once

#include <QAbstractButton>
#include <QUrl>

/// A line of text that opens an address in the user's browser.
class LinkButton : public QAbstractButton
{
    Q_OBJECT

public:
    LinkButton(const QString& title, const QUrl& address);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
