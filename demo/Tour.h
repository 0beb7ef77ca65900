#pragma once

#include "app/BrivaneApp.h"
#include "core/AppMode.h"
#include "core/Composition.h"

#include <QCoroTask>
#include <QList>
#include <QPoint>
#include <QString>

#include <functional>
#include <optional>

class QQuickWindow;

namespace brivane {

class DemoMachine;
class HoldableClock;
class ShellViewModel;

/// Goes through the real program on the demo machine, from the first start on, module by module in
/// the order of the sidebar where it can, and keeps a picture of each state that a screen can be
/// in. What there is to see in a module, its chapter shows; of a module without one there is one
/// picture. GUI thread.
class Tour {
public:
    /// Makes itself known to the tour: a constant of the file that shows a module.
    struct Chapter {
        enum class Place { InSidebar, First };

        /// Of a module, or of what frames them all, which comes last. First comes what needs a
        /// machine on which no module has done anything yet, its own included: it goes there
        /// itself.
        Chapter(std::optional<AppMode::Mode> subject, QCoro::Task<> (*showing)(Tour&),
                Place where = Place::InSidebar);

        std::optional<AppMode::Mode> mode;
        Place place;
        QCoro::Task<> (*show)(Tour&); ///< called with the module on screen
    };

    /// Writes into the folder `pictures`, which has to be there; names end in `suffix`.
    Tour(DemoMachine& machine, HoldableClock& clock, QString pictures, QString suffix);
    ~Tour();

    /// Ends after the last picture. False when a state was not reached or a picture not written;
    /// which, is on standard error.
    QCoro::Task<bool> run();

    [[nodiscard]] DemoMachine& machine() { return m_machine; }
    [[nodiscard]] HoldableClock& clock() { return m_clock; }
    [[nodiscard]] Composition& composition() { return m_composition; }
    [[nodiscard]] ShellViewModel& shell();
    [[nodiscard]] QQuickWindow& window() { return *m_window; }

    /// Clicks, or only rests, in the middle of the item with this name, the `number`-th of its
    /// kind; away from everything where the name is empty.
    void point(const QString& name, int number, Qt::MouseButton button, const QPoint& offset = {});
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Presses the keys of a text in ASCII.
    void type(const QByteArray& text);
    void settle();
    void takePicture(const QString& name) { takePicture(*m_window, name); }
    void takePicture(QQuickWindow& window, const QString& name);
    /// The same without a moment's rest before it: of what passes.
    void capture(QQuickWindow& window, const QString& name);
    /// Comes back when `isReached`, or after some seconds: then the tour has failed.
    QCoro::Task<> waitFor(QString state, std::function<bool()> isReached);

private:
    /// Lists the pictures, module by module.
    void writeIndex();

    DemoMachine& m_machine;
    HoldableClock& m_clock;
    Composition m_composition;
    BrivaneApp m_app;
    const QString m_pictures;
    const QString m_suffix;
    QQuickWindow* m_window = nullptr; ///< belongs to m_app
    bool m_isWell = true;
    QString m_heading = QStringLiteral("The first start");
    QList<std::pair<QString, QString>> m_taken; ///< under which heading, which file
};

} // namespace brivane
