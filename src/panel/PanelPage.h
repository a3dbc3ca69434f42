#pragma once

#include <QScrollArea>

/// The content of a tab: as high as it needs to be, but no higher than the screen, where it then
/// scrolls.
class PanelPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit PanelPage(int width);

    /// Takes over `content`.
    void setContent(QWidget* content);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The page wants another height.
    void heightChanged();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    int m_width;
};
