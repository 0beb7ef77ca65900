#include "components/DesktopMotion.h"

#include <memory>

#include <gio/gio.h>

namespace brivane {

bool desktopShowsAnimations()
{
    // A schema that is not installed ends the process when it is opened, so it is looked up first.
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (!source)
        return true;
    const std::unique_ptr<GSettingsSchema, decltype(&g_settings_schema_unref)> schema(
        g_settings_schema_source_lookup(source, "org.gnome.desktop.interface", TRUE),
        &g_settings_schema_unref);
    if (!schema || !g_settings_schema_has_key(schema.get(), "enable-animations"))
        return true;
    const std::unique_ptr<GSettings, decltype(&g_object_unref)> settings(
        g_settings_new("org.gnome.desktop.interface"), &g_object_unref);
    return g_settings_get_boolean(settings.get(), "enable-animations");
}

} // namespace brivane
