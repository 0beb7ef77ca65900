#pragma once

#include "app/MenuModel.h"
#include "app/NavigationModel.h"
#include "core/AppMode.h"
#include "platform/Host.h"
#include "removal/QuarantineViewModel.h"
#include "scanner/ScanViewModel.h"

#include <QColor>
#include <QCoroTask>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>

namespace brivane {

class ActivityTracker;
class CleaningSessionState;
struct KeyboardCommand;

/// Gives the quarantine, which is opened by the first call.
using QuarantineProvider = std::function<QCoro::Task<QuarantineService*>()>;

/// The frame that the modules live in: which of them is on screen, which are busy, what the keys
/// and the menu do. Screens come and go with the module; the view models that do the work stay.
///
/// The menu posts notifications, and it is the shell that reacts: "scanStartupDisk" shows the
/// scanner and scans the disk that the machine started from, in place of a scan that runs; "rescan"
/// scans the selected volume; "navigateUp" and "navigateRoot" move through the scanner's tree,
/// while it is on screen. During a cleaning session nothing of all this has an effect. GUI thread.
class ShellViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    Q_PROPERTY(brivane::AppMode::Mode appMode READ appMode WRITE setAppMode NOTIFY appModeChanged)
    Q_PROPERTY(QUrl screen READ screen NOTIFY screenEntered)
    Q_PROPERTY(QString title READ title NOTIFY appModeChanged)
    Q_PROPERTY(QString iconName READ iconName NOTIFY appModeChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY appModeChanged)
    Q_PROPERTY(bool isNavigationShown READ isNavigationShown NOTIFY navigationShownChanged)
    Q_PROPERTY(brivane::NavigationModel* modes READ modes CONSTANT)
    Q_PROPERTY(brivane::MenuModel* menu READ menu CONSTANT)
    Q_PROPERTY(brivane::ScanViewModel* scanViewModel READ scanViewModel CONSTANT)
    /// Null until the quarantine's module is first entered.
    Q_PROPERTY(brivane::QuarantineViewModel* quarantine READ quarantine NOTIFY screenEntered)

public:
    /// All of them have to outlive this, and what `quarantine` gives too.
    ShellViewModel(Host& host, ScanViewModel& scanViewModel, ActivityTracker& tracker,
                   CleaningSessionState& cleaning, QuarantineProvider quarantine,
                   QObject* parent = nullptr);

    /// The module on screen; the dashboard at first.
    [[nodiscard]] AppMode::Mode appMode() const { return m_appMode; }
    void setAppMode(AppMode::Mode mode);
    /// The module whose row is under the pointer.
    [[nodiscard]] std::optional<AppMode::Mode> hoveredMode() const { return m_hoveredMode; }
    /// The pointer came to, or left, the row of `mode`. Rows may report in any order.
    Q_INVOKABLE void setHovered(brivane::AppMode::Mode mode, bool isHovered);

    /// Whether work of `mode` goes on that its row should tell of. A scan as administrator does not
    /// count.
    [[nodiscard]] bool modeHasBackgroundActivity(AppMode::Mode mode) const;
    /// False during a cleaning session: the module has the window to itself.
    [[nodiscard]] bool isNavigationShown() const;

    /// Posts a notification of the menu.
    Q_INVOKABLE void post(const QString& notification);
    void perform(const KeyboardCommand& command);

    [[nodiscard]] QUrl screen() const;
    [[nodiscard]] QString title() const { return AppMode::title(m_appMode); }
    [[nodiscard]] QString iconName() const { return AppMode::iconName(m_appMode); }
    [[nodiscard]] QColor accent() const;
    [[nodiscard]] NavigationModel* modes() { return &m_modes; }
    [[nodiscard]] MenuModel* menu() { return &m_menu; }
    [[nodiscard]] ScanViewModel* scanViewModel() { return &m_scan; }
    [[nodiscard]] QuarantineViewModel* quarantine() { return m_quarantine.get(); }

Q_SIGNALS:
    void appModeChanged();
    /// What the module of `appMode` needs is there: its screen can be made. Mostly at once.
    void screenEntered();
    void hoveredModeChanged();
    void backgroundActivityChanged();
    void navigationShownChanged();

private:
    QCoro::Task<> openQuarantine();
    void react(const QString& notification, void (ShellViewModel::*reaction)());
    void scanStartupDisk();
    void rescan();
    void navigateUp();
    void navigateRoot();

    Host& m_host;
    ScanViewModel& m_scan;
    ActivityTracker& m_tracker;
    CleaningSessionState& m_cleaning;
    QuarantineProvider m_provideQuarantine;
    std::unique_ptr<QuarantineViewModel> m_quarantine;
    bool m_isOpeningQuarantine = false;
    AppMode::Mode m_appMode = AppMode::dashboard;
    std::optional<AppMode::Mode> m_hoveredMode;
    NavigationModel m_modes;
    MenuModel m_menu;
};

} // namespace brivane
