#include "app/NavigationModel.h"

#include "app/ModeColors.h"
#include "app/ShellViewModel.h"

namespace brivane {

NavigationModel::NavigationModel(ShellViewModel& shell)
    : m_shell(shell)
{
    for (const AppMode::NavSection section : AppMode::allSections()) {
        QString heading = AppMode::heading(section);
        for (const AppMode::Mode mode : AppMode::modes(section)) {
            m_rows.append({mode, heading});
            heading.clear();
        }
    }
    const auto refresh = [this](const QList<int>& roles) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
    };
    connect(&shell, &ShellViewModel::appModeChanged, this, [refresh] {
        refresh({IsCurrentRole, IsHighlightedRole});
    });
    connect(&shell, &ShellViewModel::hoveredModeChanged, this,
            [refresh] { refresh({IsHighlightedRole}); });
    connect(&shell, &ShellViewModel::backgroundActivityChanged, this,
            [refresh] { refresh({IsBusyRole}); });
}

int NavigationModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant NavigationModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (role) {
    case ModeRole:
        return QVariant::fromValue(row.mode);
    case Qt::DisplayRole:
    case TitleRole:
        return AppMode::title(row.mode);
    case IconRole:
        return AppMode::iconName(row.mode);
    case AccentRole:
        return modeAccentColor(row.mode);
    case HeadingRole:
        return row.heading;
    case IsCurrentRole:
        return m_shell.appMode() == row.mode;
    case IsHighlightedRole:
        return m_shell.appMode() == row.mode || m_shell.hoveredMode() == row.mode;
    case IsBusyRole:
        return m_shell.modeHasBackgroundActivity(row.mode);
    default:
        return {};
    }
}

QHash<int, QByteArray> NavigationModel::roleNames() const
{
    return {
        {ModeRole, "mode"},
        {TitleRole, "title"},
        {IconRole, "iconName"},
        {AccentRole, "accent"},
        {HeadingRole, "heading"},
        {IsCurrentRole, "isCurrent"},
        {IsHighlightedRole, "isHighlighted"},
        {IsBusyRole, "isBusy"},
    };
}

} // namespace brivane
