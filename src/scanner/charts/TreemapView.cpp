#include "scanner/charts/TreemapView.h"

#include "components/ColorPalette.h"
#include "components/Fonts.h"
#include "components/SymbolTable.h"
#include "core/ByteFormatter.h"
#include "platform/PathText.h"
#include "scanner/charts/ChartNavigation.h"
#include "scanner/charts/ChartPalette.h"
#include "scanner/charts/DeviceImage.h"
#include "scanner/charts/Treemap.h"
#include "scanner/charts/TreemapBlock.h"

#include <QEasingCurve>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <functional>
#include <unordered_map>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double appearingDuration = 1000; ///< milliseconds, as those that follow
constexpr double changeDuration = 800;
constexpr double morphDuration = 300;
constexpr double cornerRadius = 4;
constexpr double lineGap = 2;
constexpr double sizeTextLightness = 0.66; ///< towards white

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

double easeInOut(double progress)
{
    return QEasingCurve(QEasingCurve::InOutSine).valueForProgress(progress);
}

double easeOut(double progress)
{
    return QEasingCurve(QEasingCurve::OutQuad).valueForProgress(progress);
}

QFont textFont(double size, QFont::Weight weight)
{
    QFont font(textFontFamily());
    font.setPixelSize(qRound(size));
    font.setWeight(weight);
    return font;
}

} // namespace

double TreemapView::animationProgress() const
{
    return m_revealDuration > 0 ? easeInOut(std::min(m_elapsed / m_revealDuration, 1.0)) : 0;
}

void TreemapView::rebuild(std::span<const SizedNode> children, std::vector<ChartItem>& items)
{
    std::unordered_map<const FileNode*, QRectF> before;
    for (std::size_t i = 0; i < items.size(); ++i)
        before.emplace(items[i].node, shownRect(i));
    items = displayItems(children);
    m_rects = computeTreemap(items, boundingRect());
    m_from = m_rects;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (const auto found = before.find(items[i].node); found != before.end())
            m_from[i] = found->second;
    }
    m_morph = 0;
}

QRectF TreemapView::shownRect(std::size_t index) const
{
    const double part = easeOut(m_morph);
    const QRectF& from = m_from[index];
    const QRectF& to = m_rects[index];
    return {std::lerp(from.x(), to.x(), part), std::lerp(from.y(), to.y(), part),
            std::lerp(from.width(), to.width(), part), std::lerp(from.height(), to.height(), part)};
}

void TreemapView::startReveal(bool isAppearing)
{
    m_elapsed = 0;
    m_revealDuration = isAppearing ? appearingDuration : changeDuration;
    m_from = m_rects;
    m_morph = 1;
    Q_EMIT animationProgressChanged();
}

bool TreemapView::advance(int milliseconds)
{
    m_elapsed = std::min(m_elapsed + milliseconds, m_revealDuration);
    m_morph = std::min(m_morph + milliseconds / morphDuration, 1.0);
    Q_EMIT animationProgressChanged();
    return m_elapsed < m_revealDuration || m_morph < 1;
}

void TreemapView::finishMotion()
{
    m_elapsed = m_revealDuration;
    m_morph = 1;
    Q_EMIT animationProgressChanged();
}

std::optional<std::size_t> TreemapView::itemAt(const QPointF& point) const
{
    return blockAt(m_rects, point);
}

std::optional<std::size_t> TreemapView::itemBeside(std::size_t current, Qt::Key key) const
{
    std::vector<QRectF> frames;
    frames.reserve(m_rects.size());
    for (const QRectF& rect : m_rects)
        frames.push_back(blockFrame(rect));
    switch (key) {
    case Qt::Key_Left:
        return neighbour(frames, current, Direction::Left);
    case Qt::Key_Right:
        return neighbour(frames, current, Direction::Right);
    case Qt::Key_Up:
        return neighbour(frames, current, Direction::Up);
    default:
        return neighbour(frames, current, Direction::Down);
    }
}

QRectF TreemapView::itemBounds(std::size_t index) const
{
    return blockFrame(m_rects[index]);
}

void TreemapView::paint(QPainter* painter)
{
    const auto forEachBlock = [&](QPainter& on, const auto& paintPart) {
        for (std::size_t i = 0; i < items().size(); ++i) {
            const QRectF frame = blockFrame(shownRect(i));
            const double progress = blockProgress(i, animationProgress());
            if (!isBlockDrawn(frame) || progress <= 0)
                continue;
            on.save();
            const double scale = blockScale(progress);
            on.translate(frame.center());
            on.scale(scale, scale);
            on.translate(-frame.center());
            paintPart(on, i, frame, progress);
            on.restore();
        }
    };
    paintUnsplit(*painter, boundingRect(), [&](QPainter& unsplit) {
        forEachBlock(unsplit, std::bind_front(&TreemapView::paintShape, this));
    });
    painter->setRenderHint(QPainter::Antialiasing);
    forEachBlock(*painter, std::bind_front(&TreemapView::paintLabel, this));
}

void TreemapView::paintShape(QPainter& painter, std::size_t index, const QRectF& frame,
                             double progress) const
{
    const QColor color = blockColor(items()[index].colorIndex);
    const double lit = glow(index);
    painter.setOpacity(progress);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(color, std::lerp(0.35, 0.7, lit)));
    painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
    if (lit > 0) {
        QLinearGradient gradient(frame.topLeft(), frame.bottomLeft());
        gradient.setColorAt(0, faded(color, 0.3 * lit));
        gradient.setColorAt(1, faded(color, 0.05 * lit));
        painter.setBrush(gradient);
        painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
    }
    painter.setBrush(Qt::NoBrush);
    if (isMarkedByKeyboard(index) || isSelected(index))
        painter.setPen(QPen(isMarkedByKeyboard(index)
                                ? ColorPalette::lightened(ColorPalette::accent(), 0.25)
                                : ColorPalette::primaryText(),
                            2));
    else
        painter.setPen(QPen(faded(color, std::lerp(0.2, 0.9, lit)), std::lerp(0.5, 2, lit)));
    painter.drawRoundedRect(frame, cornerRadius, cornerRadius);
}

void TreemapView::paintLabel(QPainter& painter, std::size_t index, const QRectF& frame,
                             double progress) const
{
    const BlockLabel label = blockLabel(frame);
    const double opacity = label.opacity(progress);
    if (opacity <= 0)
        return;
    const ChartItem& item = items()[index];
    const QColor color = blockColor(item.colorIndex);
    const QString name = PathText::forDisplay(item.name());
    QRectF room = frame.adjusted(label.padding, label.padding, -label.padding, -label.padding);
    painter.setOpacity(progress * opacity);
    painter.setClipRect(frame);
    if (label.kind == BlockLabel::Kind::NameOnly) {
        const QFont font = textFont(label.nameSize, QFont::Medium);
        painter.setFont(font);
        painter.setPen(faded(Qt::white, 0.55));
        painter.drawText(room, Qt::AlignLeft | Qt::AlignTop,
                         QFontMetricsF(font).elidedText(name, Qt::ElideRight, room.width()));
        return;
    }

    const QFont nameFont = textFont(label.nameSize, QFont::DemiBold);
    const QFontMetricsF nameMetrics(nameFont);
    double x = room.left();
    const auto drawSymbol = [&](const QString& symbol, const QColor& tint) {
        QFont font(symbolFontFamily());
        font.setPixelSize(qRound(label.symbolSize) + 2); // glyphs have a margin of their own
        painter.setFont(font);
        painter.setPen(tint);
        painter.drawText(QRectF(x, room.top(), font.pixelSize() + 2, nameMetrics.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, SymbolTable::glyph(symbol));
        x += font.pixelSize() + 3;
    };
    if (item.isDirectory())
        drawSymbol(u"folder.fill"_s, faded(color, 0.7));
    if (item.isIncomplete)
        drawSymbol(u"lock.fill"_s, ColorPalette::warning());
    painter.setFont(nameFont);
    painter.setPen(item.node && item.node->markedForDeletion() ? ColorPalette::secondaryText()
                                                               : ColorPalette::primaryText());
    painter.drawText(QPointF(x, room.top() + nameMetrics.ascent()),
                     nameMetrics.elidedText(name, Qt::ElideRight, room.right() - x));

    const QFont sizeFont = textFont(label.sizeTextSize, QFont::Bold);
    const QFontMetricsF sizeMetrics(sizeFont);
    const double top = room.top() + nameMetrics.height() + lineGap;
    if (top + sizeMetrics.height() > frame.bottom())
        return;
    painter.setFont(sizeFont);
    // On a fill of the same colour it could hardly be read.
    painter.setPen(
        faded(ColorPalette::lightened(color, sizeTextLightness), std::lerp(0.7, 1, glow(index))));
    const QString size = ByteFormatter::format(item.size);
    painter.drawText(QPointF(room.left(), top + sizeMetrics.ascent()),
                     sizeMetrics.elidedText(item.isIncomplete ? u"≥ "_s + size : size,
                                            Qt::ElideRight, room.width()));
}

} // namespace brivane
