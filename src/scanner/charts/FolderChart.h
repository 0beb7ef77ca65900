#pragma once

#include "scanner/ScanViewModel.h"
#include "scanner/charts/ChartGlow.h"
#include "scanner/charts/ChartItem.h"
#include "scanner/charts/ChartTicker.h"

#include <QQuickPaintedItem>

namespace brivane {

/// A picture of the focused folder: one item for each piece that is drawn. It follows the view
/// model's picture of the folder, says what its items are, and moves when they change or light up.
/// Who points at them is ChartView's business. GUI thread.
class FolderChart : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(brivane::ScanViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)
    /// How many items there are, and a number that changes with anything about them.
    Q_PROPERTY(int count READ count NOTIFY itemsChanged)
    Q_PROPERTY(int revision READ revision NOTIFY itemsChanged)

public:
    explicit FolderChart(QQuickItem* parent = nullptr);

    [[nodiscard]] ScanViewModel* viewModel() const { return m_viewModel; }
    /// `viewModel` has to outlive this.
    void setViewModel(ScanViewModel* viewModel);
    [[nodiscard]] int count() const { return static_cast<int>(m_items.size()); }
    [[nodiscard]] int revision() const { return m_revision; }

    /// For display. Empty, as the two that follow, when there is no such item.
    Q_INVOKABLE QString nameOf(int index) const;
    /// Size, share of the folder and, for folders, count of files.
    Q_INVOKABLE QString detailsOf(int index) const;
    /// Where it is drawn, in this item's coordinates.
    Q_INVOKABLE QRectF boundsOf(int index) const;

Q_SIGNALS:
    void viewModelChanged();
    void itemsChanged();

protected:
    /// The folder shows other children, or these have other sizes, or the frame is another. Fills
    /// `items`.
    virtual void rebuild(std::span<const SizedNode> children, std::vector<ChartItem>& items) = 0;
    /// Another folder is shown, or the chart appears.
    virtual void startReveal(bool isAppearing) = 0;
    /// Moves what moves by so many milliseconds; whether something still moves.
    virtual bool advance(int milliseconds) = 0;
    /// Brings everything to its end.
    virtual void finishMotion() = 0;
    [[nodiscard]] virtual QRectF itemBounds(std::size_t index) const = 0;
    /// How long an item takes to light up.
    [[nodiscard]] virtual int glowDuration() const = 0;

    [[nodiscard]] const std::vector<ChartItem>& items() const { return m_items; }
    /// Null and an empty reference when there is no such item.
    [[nodiscard]] const ChartItem* itemAtIndex(int index) const;
    [[nodiscard]] FileNodeRef refOf(int index) const;
    [[nodiscard]] int indexOf(const FileNode* node) const;
    [[nodiscard]] bool isSelected(std::size_t index) const;
    /// Lights up this item alone, and none when there is no such item.
    void light(int index);
    /// From 0 to 1: how far `index` is lit up.
    [[nodiscard]] double glow(std::size_t index) const;
    /// Something has begun to move.
    void move();
    void invalidate();

    void updatePolish() override;
    void geometryChange(const QRectF& geometry, const QRectF& before) override;

private:
    bool advanceAll(int milliseconds);

    ScanViewModel* m_viewModel = nullptr;
    FileNodePtr m_directory; ///< keeps the nodes of m_items
    std::vector<ChartItem> m_items;
    ChartGlow m_glow;
    ChartTicker m_ticker;
    int m_revision = 0;
    bool m_hasAppeared = false;
};

} // namespace brivane
