#include "cleaner/CleanFailureModel.h"

#include "platform/PathText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

CleanFailureModel::CleanFailureModel(QStringList paths, QHash<QString, QString> reasons,
                                     Locations locations, QObject* parent)
    : QAbstractListModel(parent)
    , m_paths(std::move(paths))
    , m_reasons(std::move(reasons))
    , m_locations(std::move(locations))
{
}

int CleanFailureModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_paths.size());
}

QVariant CleanFailureModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString& path = m_paths[index.row()];
    switch (role) {
    case PathRole:
        return path;
    case ShownPathRole:
        return m_locations.shown(path);
    case ReasonRole:
        return PathText::forDisplay(m_reasons.value(path, u"It could not be removed."_s));
    default:
        return {};
    }
}

QHash<int, QByteArray> CleanFailureModel::roleNames() const
{
    return {{PathRole, "path"}, {ShownPathRole, "shownPath"}, {ReasonRole, "reason"}};
}

} // namespace brivane
