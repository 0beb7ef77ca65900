#include "components/SymbolTable.h"

#include "components/Fonts.h"

#include <algorithm>

namespace brivane {

namespace {

// clang-format off
constexpr Symbol table[] = {
    {u"accessibility", 0xE92C}, // accessibility_new
    {u"app.badge", 0xE069}, // web_asset
    {u"app.badge.checkmark", 0xEF4C}, // domain_verification
    {u"app.fill", 0xE069}, // web_asset
    {u"app.gift.fill", 0xE8F6}, // card_giftcard
    {u"archivebox.fill", 0xE149}, // archive
    {u"arrow.clockwise", 0xE5D5}, // refresh
    {u"arrow.down.circle.fill", 0xF181}, // arrow_circle_down
    {u"arrow.down.doc.fill", 0xF068}, // sim_card_download
    {u"arrow.down.right", 0xF1E4}, // south_east
    {u"arrow.left.circle", 0xEAA7}, // arrow_circle_left
    {u"arrow.right.circle.fill", 0xEAAA}, // arrow_circle_right
    {u"arrow.up.doc.fill", 0xE9FC}, // upload_file
    {u"arrow.up.right", 0xF1E1}, // north_east
    {u"arrow.uturn.backward", 0xE166}, // undo
    {u"arrow.uturn.backward.circle.fill", 0xE9D8}, // replay_circle_filled
    {u"bolt.fill", 0xEA0B}, // bolt
    {u"calendar.badge.clock", 0xEBCC}, // calendar_month
    {u"camera.fill", 0xE412}, // photo_camera
    {u"camera.on.rectangle.fill", 0xE3B3}, // camera_roll
    {u"camera.viewfinder", 0xE3B4}, // center_focus_strong
    {u"chart.bar.doc.horizontal.fill", 0xE85C}, // assessment
    {u"chart.bar.fill", 0xE26B}, // bar_chart
    {u"checkmark", 0xE5CA}, // check
    {u"checkmark.circle", 0xE92D}, // check_circle_outline
    {u"checkmark.circle.fill", 0xE86C}, // check_circle
    {u"checkmark.shield", 0xF013}, // gpp_good
    {u"checkmark.shield.fill", 0xE8E8}, // verified_user
    {u"checkmark.square.fill", 0xE834}, // check_box
    {u"chevron.down", 0xE5CF}, // expand_more
    {u"chevron.left", 0xE5CB}, // chevron_left
    {u"chevron.left.forwardslash.chevron.right", 0xE86F}, // code
    {u"chevron.right", 0xE5CC}, // chevron_right
    {u"chevron.up", 0xE5CE}, // expand_less
    {u"chevron.up.circle.fill", 0xF182}, // arrow_circle_up
    {u"circle", 0xE836}, // radio_button_unchecked
    {u"circle.circle.fill", 0xE917}, // donut_large
    {u"circle.grid.2x2.fill", 0xEAAC}, // cookie
    {u"clock", 0xE8B5}, // schedule
    {u"clock.fill", 0xE924}, // watch_later
    {u"cube.fill", 0xE9FE}, // view_in_ar
    {u"desktopcomputer", 0xE30B}, // desktop_mac
    {u"display", 0xEF5B}, // monitor
    {u"doc.fill", 0xE24D}, // insert_drive_file
    {u"doc.on.clipboard.fill", 0xE14F}, // content_paste
    {u"doc.on.doc.fill", 0xE173}, // file_copy
    {u"doc.plaintext", 0xEF42}, // article
    {u"doc.richtext", 0xF009}, // feed
    {u"doc.text.fill", 0xE873}, // description
    {u"doc.zipper", 0xEB2C}, // folder_zip
    {u"envelope.fill", 0xE158}, // mail
    {u"exclamationmark.circle.fill", 0xE000}, // error
    {u"exclamationmark.triangle.fill", 0xE002}, // warning
    {u"externaldrive.fill", 0xE1E0}, // usb
    {u"externaldrive.fill.badge.exclamationmark", 0xE610}, // disc_full
    {u"externaldrive.fill.badge.minus", 0xF0FF}, // cleaning_services
    {u"eye.circle.fill", 0xF1C5}, // preview
    {u"eye.fill", 0xE8F4}, // visibility
    {u"eye.slash.fill", 0xE8F5}, // visibility_off
    {u"film", 0xE8DA}, // theaters
    {u"film.fill", 0xE02C}, // movie
    {u"folder", 0xE2C8}, // folder_open
    {u"folder.badge.minus", 0xEB83}, // folder_off
    {u"folder.fill", 0xE2C7}, // folder
    {u"gauge.with.dots.needle.67percent", 0xE01B}, // av_timer
    {u"gauge.with.needle.fill", 0xE9E4}, // speed
    {u"gear", 0xE8B8}, // settings
    {u"gearshape", 0xE8B8}, // settings
    {u"gearshape.2.fill", 0xF10C}, // miscellaneous_services
    {u"gearshape.fill", 0xE8B8}, // settings
    {u"globe", 0xE80B}, // public
    {u"hammer.fill", 0xEA59}, // hardware
    {u"hand.point.up.braille.fill", 0xE913}, // touch_app
    {u"hands.sparkles.fill", 0xF21F}, // clean_hands
    {u"info.circle", 0xE88F}, // info_outline
    {u"info.circle.fill", 0xE88E}, // info
    {u"internaldrive", 0xE1DB}, // storage
    {u"internaldrive.fill", 0xE1DB}, // storage
    {u"iphone", 0xE325}, // phone_iphone
    {u"iphone.gen3", 0xE325}, // phone_iphone
    {u"key.fill", 0xE0DA}, // vpn_key
    {u"keyboard", 0xE312}, // keyboard
    {u"lightbulb.fill", 0xE0F0}, // lightbulb
    {u"line.3.horizontal", 0xE5D2}, // menu
    {u"link.badge.plus", 0xE178}, // add_link
    {u"lock.fill", 0xE897}, // lock
    {u"lock.shield.fill", 0xF0DC}, // privacy_tip
    {u"magnifyingglass", 0xE8B6}, // search
    {u"magnifyingglass.circle.fill", 0xF02F}, // manage_search
    {u"memorychip.fill", 0xE322}, // memory
    {u"menubar.dock.rectangle", 0xE06C}, // call_to_action
    {u"menubar.rectangle", 0xE069}, // web_asset
    {u"minus", 0xE15B}, // remove
    {u"mug.fill", 0xEFEF}, // coffee
    {u"music.note", 0xE405}, // music_note
    {u"network", 0xEB2F}, // lan
    {u"number.square.fill", 0xF045}, // pin
    {u"opticaldisc.fill", 0xE019}, // album
    {u"opticaldiscdrive.fill", 0xE019}, // album
    {u"opticaldiscsymbol", 0xE019}, // album
    {u"pause.fill", 0xE034}, // pause
    {u"person.badge.key.fill", 0xF02E}, // manage_accounts
    {u"photo", 0xE3F4}, // image
    {u"photo.badge.arrow.down.fill", 0xE433}, // photo_size_select_large
    {u"photo.fill", 0xE3F4}, // image
    {u"photo.stack", 0xE413}, // photo_library
    {u"photo.stack.fill", 0xE413}, // photo_library
    {u"play.fill", 0xE037}, // play_arrow
    {u"plus", 0xE145}, // add
    {u"plus.circle.fill", 0xE147}, // add_circle
    {u"power", 0xE8AC}, // power_settings_new
    {u"power.circle.fill", 0xE8AC}, // power_settings_new
    {u"questionmark.circle", 0xE8FD}, // help_outline
    {u"questionmark.folder.fill", 0xF1C0}, // help_center
    {u"rectangle.stack.fill", 0xE8EB}, // view_carousel
    {u"safari.fill", 0xE87A}, // explore
    {u"shield.lefthalf.filled", 0xE32A}, // security
    {u"shield.lefthalf.filled.badge.checkmark", 0xE8E8}, // verified_user
    {u"shippingbox", 0xE1A1}, // inventory_2
    {u"shippingbox.fill", 0xE1A1}, // inventory_2
    {u"space", 0xE256}, // space_bar
    {u"sparkle.magnifyingglass", 0xEA11}, // saved_search
    {u"sparkles", 0xE65F}, // auto_awesome
    {u"square", 0xE835}, // check_box_outline_blank
    {u"square.grid.2x2.fill", 0xE9B0}, // grid_view
    {u"square.grid.3x3.fill", 0xE5C3}, // apps
    {u"square.stack.3d.up.fill", 0xE53B}, // layers
    {u"stop.fill", 0xE047}, // stop
    {u"tablecells", 0xE265}, // table_chart
    {u"trash", 0xE92E}, // delete_outline
    {u"trash.fill", 0xE872}, // delete
    {u"wand.and.stars", 0xE663}, // auto_fix_high
    {u"wrench.and.screwdriver.fill", 0xF10B}, // handyman
    {u"xmark", 0xE5CD}, // close
    {u"xmark.app.fill", 0xE4F7}, // web_asset_off
    {u"xmark.circle.fill", 0xE5C9}, // cancel
};
// clang-format on

// The search needs the order, and no name may have two glyphs.
static_assert(std::ranges::adjacent_find(table, std::ranges::greater_equal{}, &Symbol::name) ==
              std::ranges::end(table));

const Symbol* find(QStringView name)
{
    const std::u16string_view wanted(name.utf16(), static_cast<std::size_t>(name.size()));
    const auto* found = std::ranges::lower_bound(table, wanted, {}, &Symbol::name);
    return found != std::ranges::end(table) && found->name == wanted ? found : nullptr;
}

} // namespace

std::span<const Symbol> SymbolTable::symbols()
{
    return table;
}

QStringList SymbolTable::names()
{
    QStringList result;
    result.reserve(std::ssize(table));
    for (const Symbol& symbol : table)
        result << QStringView(symbol.name).toString();
    return result;
}

bool SymbolTable::contains(const QString& name)
{
    return find(name) != nullptr;
}

QString SymbolTable::glyph(const QString& name)
{
    const Symbol* symbol = find(name);
    return QString(QChar(symbol ? symbol->glyph : fallbackGlyph));
}

QString SymbolTable::fontFamily()
{
    return symbolFontFamily();
}

} // namespace brivane
