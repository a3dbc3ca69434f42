#pragma once

#include <QWidget>

/// The window around the panel: an ordinary one with a title, above others like the widget. Closing
/// it only hides it.
class PanelWindow : public QWidget
{
    Q_OBJECT

public:
    /// Takes over `content`, is as large as that wants to be and in the middle of the screen.
    explicit PanelWindow(QWidget* content);

    /// Shows the window above the others, and gives it the keyboard.
    void makeKeyAndOrderFront();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPoint m_topLeft; ///< of the frame, when the window was last closed
};
