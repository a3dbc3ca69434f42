// Paints an SVG file into a PNG file: the running program needs no SVG reader.
// Usage: make_picture INPUT.svg OUTPUT.png HEIGHT, with the height in pixels.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: make_picture INPUT.svg OUTPUT.png HEIGHT\n");
        return EXIT_FAILURE;
    }
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    constexpr int anyWidth = 1 << 16;
    const QSize size = svg.defaultSize().scaled(anyWidth, std::atoi(argv[3]), Qt::KeepAspectRatio);
    if (!svg.isValid() || size.isEmpty()) {
        std::fprintf(stderr, "make_picture: %s is no picture\n", argv[1]);
        return EXIT_FAILURE;
    }
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    svg.render(&painter);
    painter.end();
    if (!picture.save(QString::fromLocal8Bit(argv[2]), "PNG")) {
        std::fprintf(stderr, "make_picture: %s cannot be written\n", argv[2]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
