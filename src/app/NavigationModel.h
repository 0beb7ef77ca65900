#pragma once

#include "core/AppMode.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace brivane {

class ShellViewModel;

/// The modules as rows of the sidebar, section by section. Rows never come or go. GUI thread;
/// belongs to the shell and follows it.
class NavigationModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell brings it")

public:
    enum Role {
        ModeRole = Qt::UserRole,
        TitleRole,
        IconRole,
        AccentRole,
        HeadingRole,       ///< of the section that begins with this row, else empty
        IsCurrentRole,     ///< it is on screen
        IsHighlightedRole, ///< it is on screen or under the pointer
        IsBusyRole,        ///< it has work going on
    };

    explicit NavigationModel(ShellViewModel& shell);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        AppMode::Mode mode;
        QString heading;
    };

    const ShellViewModel& m_shell;
    QList<Row> m_rows;
};

} // namespace brivane
