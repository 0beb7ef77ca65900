#pragma once

#include "core/ResultToast.h"
#include "platform/Host.h"
#include "removal/QuarantineListModel.h"
#include "removal/QuarantineService.h"

#include <QCoroTask>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace brivane {

class Composition;

/// The rules of the quarantine's screen: what is listed and how, what is ticked, what an action
/// acts on, and what is asked and said. GUI thread.
///
/// Actions take the item that their row, button or menu was shown for, whatever the list does
/// meanwhile. What has been started goes on when the screen or this is gone.
class QuarantineViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    /// See QuarantineListModel.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY itemsChanged)
    Q_PROPERTY(QString totalSizeText READ totalSizeText NOTIFY itemsChanged)
    Q_PROPERTY(QString purgeMessage READ purgeMessage NOTIFY itemsChanged)
    Q_PROPERTY(QString restoreAllMessage READ restoreAllMessage NOTIFY itemsChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    /// Each with `value` and `label`.
    Q_PROPERTY(QVariantList sortOrders READ sortOrders CONSTANT)
    Q_PROPERTY(int sortOrder READ sortOrder WRITE setSortOrder NOTIFY sortOrderChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectedItemsChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedItemsChanged)
    /// The id of the item under the pointer; empty for none.
    Q_PROPERTY(QString hoveredItem READ hoveredItem NOTIFY hoveredItemChanged)
    Q_PROPERTY(bool showPurgeConfirm READ showPurgeConfirm WRITE setShowPurgeConfirm NOTIFY
                   showPurgeConfirmChanged)
    Q_PROPERTY(bool showRestoreAllConfirm READ showRestoreAllConfirm WRITE setShowRestoreAllConfirm
                   NOTIFY showRestoreAllConfirmChanged)
    Q_PROPERTY(bool hasProgress READ hasProgress NOTIFY progressChanged)
    Q_PROPERTY(QString progressLabel READ progressLabel NOTIFY progressChanged)
    Q_PROPERTY(int progressCompleted READ progressCompleted NOTIFY progressChanged)
    Q_PROPERTY(int progressTotal READ progressTotal NOTIFY progressChanged)
    Q_PROPERTY(double progressBytes READ progressBytes NOTIFY progressChanged)
    Q_PROPERTY(QColor progressTint READ progressTint NOTIFY progressChanged)
    /// Empty when the store can be changed.
    Q_PROPERTY(QString readOnlyReason READ readOnlyReason NOTIFY readOnlyReasonChanged)
    Q_PROPERTY(bool isReadOnly READ isReadOnly NOTIFY readOnlyReasonChanged)
    Q_PROPERTY(brivane::ResultToast* toast READ toast CONSTANT)

public:
    /// Both have to outlive this.
    QuarantineViewModel(Host& host, QuarantineService& service, QObject* parent = nullptr);
    /// Once the quarantine is open. Null when the composition has gone meanwhile.
    static QCoro::Task<std::unique_ptr<QuarantineViewModel>> make(Composition& composition);

    /// The screen comes up: it starts without filter, ticks, questions and toast.
    Q_INVOKABLE void enter();

    /// Looks whether a store that is read-only can be changed by now.
    Q_INVOKABLE void tryAgain() { m_service.refresh(); }
    /// Counts the days that are left anew.
    Q_INVOKABLE void refreshDays() { m_rows.refreshDays(); }

    /// Ticks the item, or takes its tick away.
    Q_INVOKABLE void toggle(const brivane::QuarantineItem& item);
    /// Ticks all that is listed; takes these ticks away when all of it is ticked.
    Q_INVOKABLE void toggleAllListed();
    /// The pointer came to, or left, the row of an item. In any order: who left is forgotten only
    /// if nobody else has come.
    Q_INVOKABLE void setHovered(const QString& itemId, bool isHovered);
    /// Where an item is listed; -1 where it is not.
    [[nodiscard]] Q_INVOKABLE int rowOf(const brivane::QuarantineItem& item) const;

    Q_INVOKABLE void restore(const brivane::QuarantineItem& item);
    Q_INVOKABLE void permanentlyDelete(const brivane::QuarantineItem& item);
    /// Puts back all that is ticked, in the order of the store, and takes the ticks away.
    Q_INVOKABLE void restoreSelected();
    /// The same, but removes it for good.
    Q_INVOKABLE void deleteSelected();
    /// What the keys act on: all that is ticked, `current` when nothing is.
    Q_INVOKABLE void restoreChosen(const brivane::QuarantineItem& current);
    Q_INVOKABLE void deleteChosen(const brivane::QuarantineItem& current);
    Q_INVOKABLE void confirmPurge();
    Q_INVOKABLE void confirmRestoreAll();

    /// Shows the folder that the item came from.
    Q_INVOKABLE void revealOriginalFolder(const brivane::QuarantineItem& item);
    Q_INVOKABLE void copyOriginalPath(const brivane::QuarantineItem& item);

    [[nodiscard]] QuarantineListModel* rows() { return &m_rows; }
    [[nodiscard]] int itemCount() const { return static_cast<int>(m_service.items().size()); }
    [[nodiscard]] QString totalSizeText() const;
    [[nodiscard]] QString purgeMessage() const;
    [[nodiscard]] QString restoreAllMessage() const;
    [[nodiscard]] const QString& searchText() const { return m_rows.searchText(); }
    void setSearchText(const QString& text);
    [[nodiscard]] static QVariantList sortOrders();
    [[nodiscard]] int sortOrder() const { return static_cast<int>(m_rows.sortOrder()); }
    void setSortOrder(int order);
    [[nodiscard]] bool hasSelection() const { return !m_rows.selectedItems().isEmpty(); }
    /// How many of the items there are ticked, also those that the filter hides.
    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] const QString& hoveredItem() const { return m_hoveredItem; }
    [[nodiscard]] bool showPurgeConfirm() const { return m_showPurgeConfirm; }
    void setShowPurgeConfirm(bool isShown);
    [[nodiscard]] bool showRestoreAllConfirm() const { return m_showRestoreAllConfirm; }
    void setShowRestoreAllConfirm(bool isShown);
    [[nodiscard]] bool hasProgress() const { return m_service.progress().has_value(); }
    [[nodiscard]] QuarantineProgress progress() const;
    // The same as QML can read them.
    [[nodiscard]] QString progressLabel() const { return progress().label; }
    [[nodiscard]] int progressCompleted() const { return static_cast<int>(progress().completed); }
    [[nodiscard]] int progressTotal() const { return static_cast<int>(progress().total); }
    [[nodiscard]] double progressBytes() const
    {
        return static_cast<double>(progress().bytesProcessed);
    }
    [[nodiscard]] QColor progressTint() const;
    [[nodiscard]] const QString& readOnlyReason() const { return m_service.readOnlyReason(); }
    [[nodiscard]] bool isReadOnly() const { return !readOnlyReason().isEmpty(); }
    [[nodiscard]] ResultToast* toast() { return &m_toast; }

Q_SIGNALS:
    void itemsChanged();
    void searchTextChanged();
    void sortOrderChanged();
    void selectedItemsChanged();
    void hoveredItemChanged();
    void showPurgeConfirmChanged();
    void showRestoreAllConfirmChanged();
    void progressChanged();
    void readOnlyReasonChanged();

private:
    using Operation = QCoro::Task<bool> (QuarantineService::*)(QuarantineItem item);

    void itemsCameOrWent();
    void setSelectedItems(const QSet<QUuid>& items);
    [[nodiscard]] QList<QuarantineItem> takeSelected();
    static QCoro::Task<> perform(QPointer<QuarantineService> service, Operation operation,
                                 QList<QuarantineItem> items);

    Host& m_host;
    QuarantineService& m_service;
    QuarantineListModel m_rows;
    ResultToast m_toast;
    QString m_hoveredItem;
    bool m_showPurgeConfirm = false;
    bool m_showRestoreAllConfirm = false;
};

} // namespace brivane
