// Draws the project's pictures: reads an SVG file and writes it as PNG files and one ICO file, at
// build time and without any tool or module beyond the toolkit's painter.
//   icon-maker DRAWING.svg FOLDER SIZE...   DRAWING-SIZE.png for each width, DRAWING.ico with all
//
// It knows what the drawings use and refuses anything else: elements svg, g, circle and path;
// absolute path commands M, L, H, V, C and Z; colours as #rrggbb or none; round caps and joins.

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <QXmlStreamReader>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Style {
    QString fill = u"#000000"_s;
    QString stroke = u"none"_s;
    double strokeWidth = 1;
    bool roundCaps = false;
    bool roundJoins = false;

    void take(const QXmlStreamAttributes& attributes)
    {
        for (const QXmlStreamAttribute& attribute : attributes) {
            const QString value = attribute.value().toString();
            if (attribute.name() == u"fill"_s)
                fill = value;
            else if (attribute.name() == u"stroke"_s)
                stroke = value;
            else if (attribute.name() == u"stroke-width"_s)
                strokeWidth = value.toDouble();
            else if (attribute.name() == u"stroke-linecap"_s)
                roundCaps = value == u"round"_s;
            else if (attribute.name() == u"stroke-linejoin"_s)
                roundJoins = value == u"round"_s;
        }
    }
};

struct Shape {
    QPainterPath path;
    Style style;
};

struct Drawing {
    QSizeF size;
    QList<Shape> shapes;
};

class PathReader {
public:
    explicit PathReader(const QString& text) : m_text(text) {}

    std::optional<QPainterPath> read()
    {
        QPainterPath path;
        while (skipBlanks()) {
            const QChar command = m_text[m_place++];
            if (!take(command, path))
                return std::nullopt;
        }
        return path;
    }

private:
    bool take(QChar command, QPainterPath& path)
    {
        const QPointF here = path.currentPosition();
        if (command == u'M')
            path.moveTo(point());
        else if (command == u'L')
            path.lineTo(point());
        else if (command == u'H')
            path.lineTo(number(), here.y());
        else if (command == u'V')
            path.lineTo(here.x(), number());
        else if (command == u'Z')
            path.closeSubpath();
        else if (command == u'C') {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
        } else
            return false;
        return m_good;
    }
    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }
    double number()
    {
        skipBlanks();
        const qsizetype start = m_place;
        while (m_place < m_text.size() && (m_text[m_place].isDigit() || m_text[m_place] == u'.'))
            ++m_place;
        bool isNumber = false;
        const double value = m_text.mid(start, m_place - start).toDouble(&isNumber);
        m_good = m_good && isNumber;
        return value;
    }
    bool skipBlanks()
    {
        while (m_place < m_text.size() && (m_text[m_place].isSpace() || m_text[m_place] == u','))
            ++m_place;
        return m_place < m_text.size();
    }

    QString m_text;
    qsizetype m_place = 0;
    bool m_good = true;
};

bool takeElement(const QXmlStreamReader& xml, const Style& style, Drawing& drawing)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const auto number = [&attributes](const QString& name) {
        return attributes.value(name).toDouble();
    };
    if (xml.name() == u"svg"_s) {
        const QStringList box = attributes.value(u"viewBox"_s).toString().split(u' ');
        drawing.size = {box.value(2).toDouble(), box.value(3).toDouble()};
        return !drawing.size.isEmpty();
    }
    if (xml.name() == u"g"_s)
        return true;
    std::optional<QPainterPath> path;
    if (xml.name() == u"circle"_s) {
        path.emplace();
        path->addEllipse({number(u"cx"_s), number(u"cy"_s)}, number(u"r"_s), number(u"r"_s));
    } else if (xml.name() == u"path"_s) {
        path = PathReader(attributes.value(u"d"_s).toString()).read();
    }
    if (path)
        drawing.shapes.append({*path, style});
    return path.has_value();
}

std::optional<Drawing> readDrawing(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QXmlStreamReader xml(&file);
    Drawing drawing;
    QList<Style> styles{Style()};
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            Style style = styles.constLast();
            style.take(xml.attributes());
            styles.append(style);
            if (!takeElement(xml, style, drawing))
                return std::nullopt;
        } else if (token == QXmlStreamReader::EndElement) {
            styles.removeLast();
        }
    }
    return xml.hasError() ? std::nullopt : std::optional(drawing);
}

QImage paint(const Drawing& drawing, int width)
{
    const double scale = width / drawing.size.width();
    QImage image(width, qRound(drawing.size.height() * scale), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    for (const Shape& shape : drawing.shapes) {
        const Style& style = shape.style;
        const QColor fill(style.fill == u"none"_s ? u"transparent"_s : style.fill);
        QPen pen(QColor(style.stroke), style.strokeWidth);
        pen.setCapStyle(style.roundCaps ? Qt::RoundCap : Qt::FlatCap);
        pen.setJoinStyle(style.roundJoins ? Qt::RoundJoin : Qt::MiterJoin);
        painter.setPen(style.stroke == u"none"_s ? QPen(Qt::NoPen) : pen);
        painter.setBrush(fill);
        painter.drawPath(shape.path);
    }
    return image;
}

bool writeFile(const QString& fileName, const QByteArray& bytes)
{
    QSaveFile file(fileName);
    // Flushed by hand: a commit takes no note of what only its own flush finds, a full disk.
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && file.commit();
    if (!written)
        std::fprintf(stderr, "icon-maker: cannot write %s: %s\n", qPrintable(fileName),
                     qPrintable(file.errorString()));
    return written;
}

QByteArray asPng(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// An icon file is a list of sizes and places, then the pictures, which may be PNG.
QByteArray asIco(const QList<QImage>& images)
{
    QByteArray directory;
    QByteArray pictures;
    QDataStream out(&directory, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << quint16(images.size());
    const auto firstPicture = static_cast<quint32>(6 + 16 * images.size());
    for (const QImage& image : images) {
        const QByteArray png = asPng(image);
        // A side of 256 is written as 0.
        out << static_cast<quint8>(image.width()) << static_cast<quint8>(image.height());
        out << quint8(0) << quint8(0) << quint16(1) << quint16(32);
        out << static_cast<quint32>(png.size())
            << static_cast<quint32>(firstPicture + static_cast<quint32>(pictures.size()));
        pictures += png;
    }
    return directory + pictures;
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const std::optional<Drawing> drawing = readDrawing(arguments.value(0));
    if (!drawing || arguments.size() < 3) {
        std::fprintf(stderr, "icon-maker: cannot draw %s\n", qPrintable(arguments.value(0)));
        return 1;
    }
    const QString folder = arguments.value(1) + u'/' + QFileInfo(arguments[0]).baseName();
    // Where it cannot be made, the first picture says so.
    QDir().mkpath(arguments[1]);
    bool written = true;
    QList<QImage> images;
    for (const QString& size : arguments.mid(2)) {
        images.append(paint(*drawing, size.toInt()));
        written = written && writeFile(u"%1-%2.png"_s.arg(folder, size), asPng(images.last()));
    }
    written = written && writeFile(folder + u".ico"_s, asIco(images));
    return written ? 0 : 1;
}
