#pragma once

#include <QFrame>

class QVBoxLayout;

/// A group of a form: its header, its rows on a rounded ground, and perhaps a note below.
class FormSection : public QWidget
{
    Q_OBJECT

public:
    explicit FormSection(const QString& header, const QString& footer = {});

    /// Adds a row that is all `content`.
    void addRow(QWidget* content);

    /// Adds a row with a symbol and a title, and `controls` at its right end.
    void addRow(const QString& symbol, const QString& title,
                std::initializer_list<QWidget*> controls);

private:
    QVBoxLayout* m_rows;
};

/// The ground of the rows.
class FormGround : public QFrame
{
    Q_OBJECT

protected:
    void paintEvent(QPaintEvent* event) override;
};
