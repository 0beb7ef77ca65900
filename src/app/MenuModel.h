#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The application menu as rows. Constant; GUI thread.
class MenuModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell brings it")

public:
    enum Role {
        TitleRole = Qt::UserRole,
        HeadingRole,      ///< of the menu that begins with this row, else empty
        KeysRole,         ///< as the desktop writes them
        ShortcutRole,     ///< for a Shortcut; empty where the keyboard map has the keys
        NotificationRole, ///< what ShellViewModel::post() takes
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

} // namespace brivane
