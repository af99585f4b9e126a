#include "ContactSheet.h"

#include "Digits.h"

#include <algorithm>

namespace KvSyncCli {

namespace {

constexpr int mostColumns = 10;
constexpr int pictureWidth = 200;
constexpr int gap = 6;
constexpr int labelSize = 24;
constexpr int paper = 255;

QList<int> spread(const QList<int> &frames)
{
    if (frames.size() <= mostColumns)
        return frames;
    QList<int> chosen;
    for (int column = 0; column < mostColumns; ++column)
        chosen.append(frames.at(column * (frames.size() - 1) / (mostColumns - 1)));
    return chosen;
}

void paste(QImage &sheet, const QImage &picture, int left, int top)
{
    for (int row = 0; row < picture.height(); ++row)
        std::copy_n(picture.constScanLine(row), picture.width(), sheet.scanLine(top + row) + left);
}

} // namespace

ContactSheet::ContactSheet(const QList<int> &frames)
    : shownFrames(spread(frames))
{
}

void ContactSheet::add(int frame, int camera, const QImage &image)
{
    if (!shownFrames.contains(frame))
        return;
    pictures.insert({camera, frame}, image.scaledToWidth(pictureWidth, Qt::SmoothTransformation)
                                         .convertToFormat(QImage::Format_Grayscale8));
}

QImage ContactSheet::draw() const
{
    QMap<int, int> rowHeights; // by camera
    for (auto picture = pictures.begin(); picture != pictures.end(); ++picture) {
        int &height = rowHeights[picture.key().first];
        height = std::max(height, picture.value().height());
    }
    if (rowHeights.isEmpty())
        return {};

    int sheetHeight = labelSize;
    for (const int height : rowHeights)
        sheetHeight += height + gap;
    QImage sheet(labelSize + shownFrames.size() * (pictureWidth + gap), sheetHeight,
                 QImage::Format_Grayscale8);
    sheet.fill(paper);

    for (int column = 0; column < shownFrames.size(); ++column)
        drawNumber(sheet, shownFrames.at(column), labelSize + column * (pictureWidth + gap), gap);
    int top = labelSize;
    for (auto row = rowHeights.begin(); row != rowHeights.end(); ++row) {
        drawNumber(sheet, row.key(), gap, top);
        for (int column = 0; column < shownFrames.size(); ++column)
            paste(sheet, pictures.value({row.key(), shownFrames.at(column)}),
                  labelSize + column * (pictureWidth + gap), top);
        top += row.value() + gap;
    }
    return sheet;
}

} // namespace KvSyncCli
