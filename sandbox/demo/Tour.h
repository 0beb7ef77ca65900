#pragma once

#include <QCoroTask>
#include <QPoint>
#include <QString>

#include <functional>

class QQuickWindow;

namespace brivane {

class BrivaneApp;
class DemoMachine;
class HoldableClock;
class QuarantineService;
class ScanViewModel;
class ShellViewModel;

/// Goes through the real program on the demo machine, from the first start on, and keeps a picture
/// of each state that a screen can be in. GUI thread.
class Tour {
public:
    /// Writes into the folder `pictures`, which has to be there; names end in `suffix`.
    Tour(DemoMachine& machine, HoldableClock& clock, QString pictures, QString suffix);

    /// Ends after the last picture. False when a state was not reached or a picture not written;
    /// which, is on standard error.
    QCoro::Task<bool> run();

private:
    QCoro::Task<> showScan(ScanViewModel& scan);
    /// Both charts: at rest, under the pointer, with the keyboard, and of folders of one to many.
    QCoro::Task<> showCharts(ScanViewModel& scan);
    QCoro::Task<> showAdminScan(ScanViewModel& scan);
    /// Shows the folder at `path`, which begins below the home folder.
    void enter(ScanViewModel& scan, const QStringList& path);
    /// What can be done in a finished scan.
    QCoro::Task<> showRows(ScanViewModel& scan);
    /// The window around the modules, while a finished scan is there.
    QCoro::Task<> showShell(ShellViewModel& shell);
    /// The quarantine: read-only, with things of every kind, asked, at work, done and empty.
    QCoro::Task<> showQuarantine(ShellViewModel& shell);
    QCoro::Task<> fillQuarantine(QuarantineService& quarantine);
    QCoro::Task<> showGallery();
    /// Clicks, or only rests, in the middle of the item with this name, the `number`-th of its
    /// kind.
    void point(const QString& name, int number, Qt::MouseButton button, const QPoint& offset = {});
    void settle();
    void takePicture(const QString& name) { takePicture(*m_window, name); }
    void takePicture(QQuickWindow& window, const QString& name);
    /// The same without a moment's rest before it: of what passes.
    void capture(QQuickWindow& window, const QString& name);
    /// Comes back when `isReached`, or after some seconds: then the tour has failed.
    QCoro::Task<> waitFor(QString state, std::function<bool()> isReached);

    DemoMachine& m_machine;
    HoldableClock& m_clock;
    const QString m_pictures;
    const QString m_suffix;
    QQuickWindow* m_window = nullptr;
    bool m_isWell = true;
};

} // namespace brivane
