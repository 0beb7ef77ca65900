#pragma once

#include "app/ShellViewModel.h"

#include <QObject>
#include <QQmlApplicationEngine>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QQuickWindow;

namespace brivane {

class Composition;

/// The entry of the program: asks once whether it may read everything, loads the settings, and
/// decides whether the window shows the onboarding or the modules. GUI thread.
class BrivaneApp : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, and it makes the window")
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)
    /// Access or a finished onboarding; once true it stays so.
    Q_PROPERTY(bool isOnboarded READ isOnboarded WRITE setOnboarded NOTIFY isOnboardedChanged)
    /// Made when it is first asked for.
    Q_PROPERTY(brivane::ShellViewModel* shell READ shell CONSTANT)

public:
    /// Loads the settings. `composition` has to outlive this.
    explicit BrivaneApp(Composition& composition);
    ~BrivaneApp() override;

    /// Sets what all windows of the process share: name, fonts, motion. To be called once, after
    /// the QGuiApplication was made.
    static void prepareProcess();

    /// Makes the main window. Null if it cannot be made; the reason is on standard error then.
    QQuickWindow* open();

    /// Shows the window above the others. `token` is the desktop's permission to take the focus, as
    /// SingleInstance brings it; empty for none.
    void bringToFront(const QByteArray& token);

    [[nodiscard]] bool hasFullDiskAccess() const { return m_hasFullDiskAccess; }
    [[nodiscard]] bool isOnboarded() const { return m_hasFullDiskAccess || m_onboardingCompleted; }
    /// True ends the onboarding for this start and all later ones; false is ignored.
    void setOnboarded(bool onboarded);
    ShellViewModel* shell();
    /// Posts the notification that ends the program.
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void hasFullDiskAccessChanged();
    void isOnboardedChanged();

private:
    void listenToKeys();

    Composition& m_composition;
    bool m_hasFullDiskAccess;
    bool m_onboardingCompleted;
    std::unique_ptr<ShellViewModel> m_shell;
    QTimer m_hour;
    QQuickWindow* m_window = nullptr;                ///< belongs to m_engine
    std::unique_ptr<QQmlApplicationEngine> m_engine; ///< goes first: its objects use all the rest
};

} // namespace brivane
