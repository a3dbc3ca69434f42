// Saves what the display shows as the picture file given as argument.

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    if (argc != 2)
        qFatal("usage: screenshot FILE");
    const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow();
    return picture.save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
