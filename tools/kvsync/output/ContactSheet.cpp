#include "output/ContactSheet.h"

#include <algorithm>
#include <cstring>

namespace KvSyncCli {

namespace {

constexpr int mostColumns = 10;
constexpr int pictureWidth = 200;
constexpr int gap = 6;
constexpr int labelSize = 24;

QImage small(const QImage &image)
{
    return image.scaledToWidth(pictureWidth, Qt::SmoothTransformation)
        .convertToFormat(image.isGrayscale() ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
}

void paste(QImage &sheet, const QImage &picture, int left, int top)
{
    if (picture.isNull())
        return;
    const QImage same = picture.convertToFormat(sheet.format());
    const std::size_t pixelBytes = static_cast<std::size_t>(sheet.depth()) / 8;
    const std::size_t offset = static_cast<std::size_t>(left) * pixelBytes;
    const std::size_t length = static_cast<std::size_t>(same.width()) * pixelBytes;
    for (int row = 0; row < same.height(); ++row)
        std::memcpy(sheet.scanLine(top + row) + offset, same.constScanLine(row), length);
}

// Digits by hand: fonts would need a whole graphical application.

constexpr int digitColumns = 3;
constexpr int digitRows = 5;
constexpr int dotSize = 2;

const char *const digits[10][digitRows] = {
    {"###", "# #", "# #", "# #", "###"}, {" # ", "## ", " # ", " # ", "###"},
    {"###", "  #", "###", "#  ", "###"}, {"###", "  #", "###", "  #", "###"},
    {"# #", "# #", "###", "  #", "  #"}, {"###", "#  ", "###", "  #", "###"},
    {"###", "#  ", "###", "# #", "###"}, {"###", "  #", "  #", "  #", "  #"},
    {"###", "# #", "###", "# #", "###"}, {"###", "# #", "###", "  #", "###"},
};

void drawDot(QImage &image, int left, int top)
{
    const int right = std::min(left + dotSize, image.width());
    const int bottom = std::min(top + dotSize, image.height());
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            image.setPixelColor(x, y, Qt::black);
}

void drawDigit(QImage &image, int digit, int left, int top)
{
    for (int row = 0; row < digitRows; ++row)
        for (int column = 0; column < digitColumns; ++column)
            if (digits[digit][row][column] == '#')
                drawDot(image, left + column * dotSize, top + row * dotSize);
}

// What does not fit is cut off.
void drawNumber(QImage &image, int number, int left, int top)
{
    const QString text = QString::number(std::max(number, 0));
    for (int place = 0; place < text.size(); ++place)
        drawDigit(image, text.at(place).digitValue(), left + place * (digitColumns + 1) * dotSize,
                  top);
}

} // namespace

void ContactSheet::add(int place, int frame, int camera, const QImage &image)
{
    if (wants(place))
        insert(place, frame, camera, small(image));
}

QImage ContactSheet::draw() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const QList<Column> shown = chosenColumns();
    QMap<int, int> rowHeights; // by camera
    bool isColored = false;
    for (const Column &column : shown) {
        for (auto picture = column.pictures.begin(); picture != column.pictures.end(); ++picture) {
            int &height = rowHeights[picture.key()];
            height = std::max(height, picture.value().height());
            isColored = isColored || picture.value().format() == QImage::Format_RGB888;
        }
    }
    if (rowHeights.isEmpty())
        return {};

    int sheetHeight = labelSize;
    for (const int height : qAsConst(rowHeights))
        sheetHeight += height + gap;
    QImage sheet(labelSize + shown.size() * (pictureWidth + gap), sheetHeight,
                 isColored ? QImage::Format_RGB888 : QImage::Format_Grayscale8);
    sheet.fill(Qt::white);

    const auto leftOf = [](int column) { return labelSize + column * (pictureWidth + gap); };
    for (int column = 0; column < shown.size(); ++column)
        drawNumber(sheet, shown.at(column).frame, leftOf(column), gap);
    int top = labelSize;
    for (auto row = rowHeights.begin(); row != rowHeights.end(); ++row) {
        drawNumber(sheet, row.key(), gap, top);
        for (int column = 0; column < shown.size(); ++column)
            paste(sheet, shown.at(column).pictures.value(row.key()), leftOf(column), top);
        top += row.value() + gap;
    }
    return sheet;
}

bool ContactSheet::wants(int place) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return place % distance == 0;
}

void ContactSheet::insert(int place, int frame, int camera, const QImage &picture)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (place % distance != 0)
        return; // it has doubled meanwhile
    Column &column = columns[place];
    column.frame = frame;
    column.pictures.insert(camera, picture);
    if (columns.size() <= 2 * mostColumns)
        return;
    distance *= 2;
    for (auto each = columns.begin(); each != columns.end();)
        each = each.key() % distance == 0 ? std::next(each) : columns.erase(each);
}

QList<ContactSheet::Column> ContactSheet::chosenColumns() const
{
    const QList<Column> all = columns.values();
    if (all.size() <= mostColumns)
        return all;
    QList<Column> chosen;
    for (int column = 0; column < mostColumns; ++column)
        chosen.append(all.at(column * (all.size() - 1) / (mostColumns - 1)));
    return chosen;
}

} // namespace KvSyncCli
