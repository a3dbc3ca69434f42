#pragma once

#include <QWidget>

/// The program's name, version and makers, below their logo.
class AboutView : public QWidget
{
    Q_OBJECT

public:
    /// `logo` is the path of a picture; without one the title comes first.
    explicit AboutView(const QString& logo);

    /// The version of the program, "1.0" if it was given none.
    static QString appVersion();
};
