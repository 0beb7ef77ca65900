#include "cleaner/CleanerCategoryListModel.h"

#include "cleaner/tables/RiskBadges.h"
#include "components/ColorPalette.h"
#include "core/ByteFormatter.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr quint64 largeSize = 1'073'741'824; // above it, a size is told in the colour of a warning

QColor detailColor(const CleanerCategory& category)
{
    return !category.isScanning() && category.totalSize() > largeSize ? ColorPalette::warning()
                                                                      : ColorPalette::subtleText();
}

Qt::CheckState checkState(const CleanerCategory& category)
{
    if (category.selectedCount() == 0)
        return Qt::Unchecked;
    return category.areAllSelected() ? Qt::Checked : Qt::PartiallyChecked;
}

const RiskBadge& badgeOf(const CleanerCategory& category)
{
    return riskBadges[static_cast<std::size_t>(category.riskLevel())];
}

} // namespace

void CleanerCategoryListModel::setCategories(const std::vector<Category>& categories)
{
    const bool isOtherScan = std::ranges::none_of(m_categories, [&](const Category& category) {
        return std::ranges::find(categories, category) != categories.end();
    });
    if (!isOtherScan || categories.empty()) {
        removeAllBut(categories);
        insertMissing(categories);
        return;
    }
    beginResetModel();
    for (const Category& category : m_categories)
        category->disconnect(this);
    m_categories = categories;
    for (const Category& category : m_categories)
        watch(category);
    endResetModel();
}

void CleanerCategoryListModel::removeAllBut(const std::vector<Category>& categories)
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        const auto at = m_categories.begin() + row;
        if (std::ranges::find(categories, *at) != categories.end())
            continue;
        beginRemoveRows({}, row, row);
        (*at)->disconnect(this);
        m_categories.erase(at);
        endRemoveRows();
    }
}

void CleanerCategoryListModel::insertMissing(const std::vector<Category>& categories)
{
    for (std::size_t row = 0; row < categories.size(); ++row) {
        if (row < m_categories.size() && m_categories[row] == categories[row])
            continue;
        beginInsertRows({}, static_cast<int>(row), static_cast<int>(row));
        m_categories.insert(m_categories.begin() + static_cast<std::ptrdiff_t>(row),
                            categories[row]);
        watch(categories[row]);
        endInsertRows();
    }
}

void CleanerCategoryListModel::watch(const Category& category)
{
    const auto tell = [this, raw = category.get()] {
        const auto found = std::ranges::find(m_categories, raw, &Category::get);
        if (found != m_categories.end())
            tellRow(static_cast<int>(found - m_categories.begin()),
                    {IsScanningRole, DetailRole, DetailColorRole, CheckStateRole});
    };
    connect(category.get(), &CleanerCategory::itemsChanged, this, tell);
    connect(category.get(), &CleanerCategory::selectionChanged, this, tell);
    connect(category.get(), &CleanerCategory::isScanningChanged, this, tell);
}

void CleanerCategoryListModel::setChosen(const QString& type)
{
    const int before = rowOf(m_chosen);
    m_chosen = type;
    for (const int row : {before, rowOf(type)})
        tellRow(row, {IsChosenRole});
}

void CleanerCategoryListModel::tellRow(int row, const QList<int>& roles)
{
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}

CleanerCategoryListModel::Category CleanerCategoryListModel::find(const QString& type) const
{
    const int row = rowOf(type);
    return row < 0 ? Category() : m_categories[static_cast<std::size_t>(row)];
}

int CleanerCategoryListModel::rowOf(const QString& type) const
{
    const auto found = std::ranges::find_if(m_categories, [&](const Category& category) {
        return factsOf(category->type()).rawValue == type;
    });
    return found == m_categories.end() ? -1 : static_cast<int>(found - m_categories.begin());
}

int CleanerCategoryListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_categories.size());
}

QVariant CleanerCategoryListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const CleanerCategory& category = *m_categories[static_cast<std::size_t>(index.row())];
    const RiskBadge& badge = badgeOf(category);
    switch (role) {
    case TypeRole:
        return factsOf(category.type()).rawValue;
    case NameRole:
        return category.name();
    case IconNameRole:
        return category.iconName();
    case TintRole:
        return category.iconColor();
    case IsScanningRole:
        return category.isScanning();
    case DetailRole:
        return category.isScanning() ? u"Scanning..."_s
                                     : ByteFormatter::format(category.totalSize());
    case DetailColorRole:
        return detailColor(category);
    case CheckStateRole:
        return checkState(category);
    case RiskLabelRole:
        return badge.label.toString();
    case RiskIconRole:
        return badge.symbol.toString();
    case RiskColorRole:
        return QColor::fromHsvF(badge.hue, badge.saturation, badge.brightness);
    case RiskToolTipRole:
        return QString(badge.label % u" — " % badge.help);
    case IsChosenRole:
        return factsOf(category.type()).rawValue == m_chosen;
    default:
        return {};
    }
}

QHash<int, QByteArray> CleanerCategoryListModel::roleNames() const
{
    return {
        {TypeRole, "type"},
        {NameRole, "name"},
        {IconNameRole, "iconName"},
        {TintRole, "itsTint"},
        {IsScanningRole, "isScanning"},
        {DetailRole, "detail"},
        {DetailColorRole, "detailColor"},
        {CheckStateRole, "itsCheckState"},
        {RiskLabelRole, "riskLabel"},
        {RiskIconRole, "riskIcon"},
        {RiskColorRole, "riskColor"},
        {RiskToolTipRole, "riskToolTip"},
        {IsChosenRole, "isChosen"},
    };
}

} // namespace brivane
