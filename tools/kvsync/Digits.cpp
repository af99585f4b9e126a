#include "Digits.h"

#include <QtCore/QString>

#include <algorithm>

namespace KvSyncCli {

namespace {

constexpr int columns = 3;
constexpr int rows = 5;
constexpr int dotSize = 2;

const char *const digits[10][rows] = {
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
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            if (digits[digit][row][column] == '#')
                drawDot(image, left + column * dotSize, top + row * dotSize);
}

} // namespace

void drawNumber(QImage &image, int number, int left, int top)
{
    const QString text = QString::number(std::max(number, 0));
    for (int place = 0; place < text.size(); ++place)
        drawDigit(image, text.at(place).digitValue(), left + place * (columns + 1) * dotSize, top);
}

} // namespace KvSyncCli
