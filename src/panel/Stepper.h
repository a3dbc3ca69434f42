#pragma once

#include "panel/StepRange.h"

#include <QWidget>

class QToolButton;

/// A button to lower and one to raise a value, which are one control for keyboard and assistive
/// technology. A value from outside the range stays until a press.
class Stepper : public QWidget
{
    Q_OBJECT

public:
    /// `unit` follows the value where it is read out.
    Stepper(const QString& title, StepRange range, const QString& unit);

    qint64 value() const { return m_value; }
    void setValue(qint64 value);

    const StepRange& range() const { return m_range; }

    /// The value as it is shown, such as "40 min".
    QString text() const;

    void raiseValue();
    void lowerValue();

    /// Takes the value as a press does, whatever the range.
    void request(qint64 value);

Q_SIGNALS:
    /// A press asks for this value.
    void valueRequested(qint64 value);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QToolButton* addButton(const QString& symbol, const QString& words, void (Stepper::*action)());
    void offerButtons();

    StepRange m_range;
    QString m_unit;
    qint64 m_value = 0;
    int m_wheelTurn = 0; ///< that has not made a step yet, in eighths of a degree
    QToolButton* m_lower;
    QToolButton* m_raise;
};
