#include <QApplication>
#include <QWidget>

/// What any window of the toolkit costs: the measure of the benchmarks beside it.
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(250, 320);
    window.show();
    return QApplication::exec();
}
