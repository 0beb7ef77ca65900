#include "platform/Workspace.h"

#include "platform/Locations.h"
#include "platform/PathText.h"
#include "platform/SystemLog.h"
#include "platform/Worker.h"
#include "platform/linux/RunningApplications.h"

#include <array>

// GIO's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <gio/gio.h>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

struct Release {
    void operator()(char* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    template<typename Object>
    void operator()(Object* object) const
    {
        g_object_unref(object);
    }
};

template<typename T>
using Owned = std::unique_ptr<T, Release>;

/// Why something did not work; empty when it did.
using Reason = QString;

Reason reasonOf(GError* raised)
{
    const Owned<GError> error(raised);
    return QString::fromUtf8(error->message);
}

/// Asks the file manager of the desktop, which the bus starts when it does not run.
Reason showSelected(const QByteArray& path, GCancellable* cancellable)
{
    constexpr auto fileManager = "org.freedesktop.FileManager1";
    GError* error = nullptr;
    // Byte for byte; a QUrl would be made of text.
    const Owned<char> uri(g_filename_to_uri(path.constData(), nullptr, &error));
    if (!uri)
        return reasonOf(error);
    // A connection of its own: the one that GIO shares ends the process when the bus goes away.
    const Owned<char> address(
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, cancellable, &error));
    if (!address)
        return reasonOf(error);
    constexpr auto asClient =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const Owned<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
        address.get(), asClient, nullptr, cancellable, &error));
    if (!bus)
        return reasonOf(error);
    const std::array<const char*, 2> uris = {uri.get(), nullptr};
    const Owned<GVariant> reply(g_dbus_connection_call_sync(
        bus.get(), fileManager, "/org/freedesktop/FileManager1", fileManager, "ShowItems",
        g_variant_new("(^ass)", uris.data(), ""), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, cancellable,
        &error));
    return reply ? Reason() : reasonOf(error);
}

/// What a program is launched with. Its environment is taken now, on the GUI thread, which alone
/// changes that of this program.
Owned<GAppLaunchContext> launchContext()
{
    Owned<GAppLaunchContext> context(g_app_launch_context_new());
    g_app_launch_context_unsetenv(context.get(), "XDG_ACTIVATION_TOKEN");
    return context;
}

Reason openFolderOf(const QByteArray& path, GAppLaunchContext* context, GCancellable* cancellable)
{
    GError* error = nullptr;
    // To launch, GIO uses the connection that it shares, and may go on using it.
    const Owned<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    const Owned<char> folder(g_path_get_dirname(path.constData()));
    const Owned<char> uri(g_filename_to_uri(folder.get(), nullptr, &error));
    if (!uri || !g_app_info_launch_default_for_uri(uri.get(), context, &error))
        return reasonOf(error);
    return {};
}

/// Works on a thread of its own: to reach the session's bus may take time already, and so may a
/// file manager that has to be started. One request follows the other.
class DesktopWorkspace final : public Workspace {
public:
    void reveal(const QString& path) override
    {
        m_worker.run([path, context = launchContext()](const std::stop_token& stop) {
            if (stop.stop_requested())
                return;
            const Owned<GCancellable> cancellable(g_cancellable_new());
            const std::stop_callback cancel(stop, [&] { g_cancellable_cancel(cancellable.get()); });
            const QByteArray bytes = PathText::toBytes(path);
            const Reason notShown = showSelected(bytes, cancellable.get());
            if (notShown.isEmpty() || stop.stop_requested())
                return;
            const Reason notOpened = openFolderOf(bytes, context.get(), cancellable.get());
            if (notOpened.isEmpty())
                return;
            writeToSystemLog(
                u"com.brivane.app", u"scanner", LogLevel::Error,
                u"Could not show %1 in the file manager: %2; nor open its folder: %3"_s.arg(
                    path, notShown, notOpened));
        });
    }

    std::vector<RunningApplication> runningApplications() override
    {
        return readRunningApplications(m_places);
    }

private:
    const SoftwarePlaces m_places = SoftwarePlaces::of(Locations::onLinux());
    Worker m_worker{u"workspace"_s};
};

} // namespace

std::unique_ptr<Workspace> Workspace::ofThisMachine()
{
    return std::make_unique<DesktopWorkspace>();
}

} // namespace brivane
