#include "demo/Tour.h"

#include "app/BrivaneApp.h"
#include "app/ShellViewModel.h"
#include "core/Composition.h"
#include "demo/DemoMachine.h"
#include "sandbox/AdvanceScreen.h"

#include <QCoreApplication>
#include <QCoroTimer>
#include <QCursor>
#include <QDeadlineTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <vector>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int polls = 500;
constexpr auto pollInterval = 20ms;
constexpr auto settlingTime = 60ms;

std::vector<const Tour::Chapter*>& chapters()
{
    static std::vector<const Tour::Chapter*> all;
    return all;
}

bool comesFirst(AppMode::Mode mode)
{
    return std::ranges::any_of(chapters(), [mode](const Tour::Chapter* chapter) {
        return chapter->mode == mode && chapter->place == Tour::Chapter::Place::First;
    });
}

/// The modules in the order in which they are shown.
std::vector<AppMode::Mode> modesInOrder()
{
    std::vector<AppMode::Mode> modes;
    for (const AppMode::NavSection section : AppMode::allSections())
        std::ranges::copy(AppMode::modes(section), std::back_inserter(modes));
    std::ranges::stable_partition(modes, &comesFirst);
    return modes;
}

/// The middles of the visible items with this name, from the top down.
std::vector<QPoint> placesOf(const QQuickItem& root, const QString& name)
{
    std::vector<QPoint> places;
    QList<QQuickItem*> open = root.childItems();
    while (!open.isEmpty()) {
        QQuickItem* item = open.takeLast();
        if (!item->isVisible())
            continue;
        if (item->objectName() == name)
            places.push_back(item->mapToScene(item->boundingRect().center()).toPoint());
        open += item->childItems();
    }
    std::ranges::sort(places, {}, &QPoint::y);
    return places;
}

} // namespace

Tour::Chapter::Chapter(std::optional<AppMode::Mode> subject, QCoro::Task<> (*showing)(Tour&),
                       Place where)
    : mode(subject)
    , place(where)
    , show(showing)
{
    chapters().push_back(this);
}

Tour::Tour(DemoMachine& machine, HoldableClock& clock, QString pictures, QString suffix)
    : m_machine(machine)
    , m_clock(clock)
    , m_composition(machine.host())
    , m_app(m_composition)
    , m_pictures(std::move(pictures))
    , m_suffix(std::move(suffix))
{
}

Tour::~Tour() = default;

QCoro::Task<bool> Tour::run()
{
    // Without a display the pointer rests in a corner of the window, and hovers there.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight() +
                    QPoint(5000, 5000));
    m_window = m_app.open();
    if (!m_window)
        co_return false;
    if (!m_app.isOnboarded()) {
        takePicture(u"onboarding"_s);
        m_app.setOnboarded(true);
    }
    const auto names = QMetaEnum::fromType<AppMode::Mode>();
    const std::vector<AppMode::Mode> modes = modesInOrder();
    for (const AppMode::Mode mode : modes) {
        if (!comesFirst(mode))
            shell().setAppMode(mode);
        m_heading = AppMode::title(mode);
        bool isShown = false;
        for (const Chapter* chapter : chapters()) {
            if (chapter->mode != mode)
                continue;
            QCoro::Task<> showing = chapter->show(*this);
            co_await showing;
            isShown = true;
        }
        if (!isShown)
            takePicture(u"module-"_s + QString::fromLatin1(names.valueToKey(mode)));
    }
    shell().setAppMode(AppMode::dashboard);
    m_heading = u"The window"_s;
    for (const Chapter* chapter : chapters()) {
        if (chapter->mode)
            continue;
        QCoro::Task<> showing = chapter->show(*this);
        co_await showing;
    }
    writeIndex();
    co_return m_isWell;
}

void Tour::writeIndex()
{
    QByteArray text = "# Brivane in pictures\n";
    QString heading;
    for (const auto& [title, file] : std::as_const(m_taken)) {
        if (heading != title)
            text += "\n## " + title.toUtf8() + "\n\n";
        heading = title;
        text += "![" + file.toUtf8() + "](" + file.toUtf8() + ")\n";
    }
    QFile index(m_pictures + u"/index%1.md"_s.arg(m_suffix));
    if (!index.open(QIODevice::WriteOnly) || index.write(text) != text.size()) {
        std::fprintf(stderr, "%s could not be written\n", qPrintable(index.fileName()));
        m_isWell = false;
    }
}

ShellViewModel& Tour::shell()
{
    return *m_app.shell();
}

void Tour::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window, key, modifiers);
}

void Tour::type(const QByteArray& text)
{
    for (const char letter : text)
        QTest::keyClick(m_window, letter);
}

void Tour::point(const QString& name, int number, Qt::MouseButton button, const QPoint& offset)
{
    // An empty name: away from everything.
    QPoint place = QPoint(m_window->width(), m_window->height()) - QPoint(2, 2);
    if (!name.isEmpty()) {
        const std::vector<QPoint> places = placesOf(*m_window->contentItem(), name);
        if (static_cast<std::size_t>(number) >= places.size()) {
            std::fprintf(stderr, "The tour found no %s\n", qPrintable(name));
            m_isWell = false;
            return;
        }
        place = places[static_cast<std::size_t>(number)] + offset;
    }
    QTest::mouseMove(m_window, place);
    if (button != Qt::NoButton)
        QTest::mouseClick(m_window, button, {}, place);
    settle();
}

void Tour::settle()
{
    // What has changed is laid out in the next frames, which come by the event loop.
    QDeadlineTimer settled(settlingTime);
    while (!settled.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (m_window && advanceScreen(*m_window))
            settled.setRemainingTime(settlingTime);
    }
}

void Tour::takePicture(QQuickWindow& window, const QString& name)
{
    settle();
    capture(window, name);
}

void Tour::capture(QQuickWindow& window, const QString& name)
{
    const QString picture = name + m_suffix + u".png"_s;
    const QString file = m_pictures + u'/' + picture;
    m_taken.append({m_heading, picture});
    window.grabWindow(); // what is new settles in its first frame
    if (!window.grabWindow().save(file)) {
        std::fprintf(stderr, "%s could not be written\n", qPrintable(file));
        m_isWell = false;
    }
}

QCoro::Task<> Tour::waitFor(QString state, std::function<bool()> isReached)
{
    for (int poll = 0; poll < polls; ++poll) {
        if (isReached())
            co_return;
        const std::chrono::milliseconds interval = pollInterval;
        co_await QCoro::sleepFor(interval);
    }
    std::fprintf(stderr, "The tour waited in vain for: %s\n", qPrintable(state));
    m_isWell = false;
}

} // namespace brivane
