#include "view/ui/context_menus.h"

#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

using namespace view_command;

constexpr MenuEntry Row(int id) {
    return MenuEntry::Command(id);
}
constexpr MenuEntry kLine = MenuEntry::Separator();

constexpr MenuEntry kNormal[] = {
    Row(kPlay),
    Row(kPlayLooped),
    Row(kPlayToEnd),
    Row(kPreviewCut),
    Row(kPreRoll),
    Row(kStop),
    kLine,
    Row(kUndo),
    Row(kRedo),
    kLine,
    Row(kPaste),
    Row(kPasteReplicate),
    Row(kPasteNew),
    Row(kMix),
    Row(kCrossfadeMix),
    kLine,
    Row(kSelectAll),
    Row(kGoToCursor),
    Row(kDropMarker),
    MenuEntry::Begin("Mar&ker"),
    Row(kMarkerAdd),
    Row(kMarkerEdit),
    Row(kMarkerDelete),
    MenuEntry::End(),
    kLine,
    Row(kZoomSelection),
    MenuEntry::Begin("Zoom Time"),
    Row(kZoomTimeIn),
    Row(kZoomTimeOut),
    Row(kZoomTimeFull),
    MenuEntry::End(),
    MenuEntry::Begin("Zoom Level"),
    Row(kZoomLevelIn),
    Row(kZoomLevelOut),
    Row(kZoomLevelFull),
    MenuEntry::End(),
    Row(kZoomUser),
    Row(kZoomDefault),
};

constexpr MenuEntry kSelection[] = {
    Row(kPlay),
    Row(kPlayLooped),
    Row(kPlayToEnd),
    Row(kPreviewCut),
    Row(kStop),
    kLine,
    Row(kUndo),
    Row(kRedo),
    kLine,
    Row(kCut),
    Row(kCopy),
    Row(kDelete),
    Row(kPaste),
    Row(kPasteReplicate),
    Row(kPasteOverwrite),
    Row(kPasteBlockOverwrite),
    Row(kPasteBlockCopy),
    Row(kPasteNew),
    Row(kMix),
    Row(kCrossfadeMix),
    kLine,
    Row(kSelectAll),
    Row(kDropMarker),
    Row(kMarkerAdd),
    kLine,
    Row(kZoomSelection),
    MenuEntry::Begin("Zoom Time"),
    Row(kZoomTimeIn),
    Row(kZoomTimeOut),
    Row(kZoomTimeFull),
    MenuEntry::End(),
    MenuEntry::Begin("Zoom Level"),
    Row(kZoomLevelIn),
    Row(kZoomLevelOut),
    Row(kZoomLevelFull),
    MenuEntry::End(),
    Row(kZoomUser),
    Row(kZoomDefault),
};

constexpr MenuEntry kMarker[] = {
    Row(kMarkerPlay),   Row(kMarkerSelect),        kLine,
    Row(kMarkerRename), Row(kMarkerFromSelection), Row(kMarkerRemove),
};

constexpr MenuEntry kRuler[] = {
    Row(kShowWaveform), Row(kShowSpectrogram), Row(kShowBoth), kLine, Row(kSpectrogramSettings),
};

}  // namespace

const char* NameOf(ContextMenu menu) {
    if (menu == ContextMenu::kMarker) return "Marker";
    if (menu == ContextMenu::kRuler) return "Ruler";
    return menu == ContextMenu::kSoundViewSelection ? "Sound View Selection" : "Sound View Normal";
}

std::span<const MenuEntry> EntriesOf(ContextMenu menu) {
    if (menu == ContextMenu::kMarker) return kMarker;
    if (menu == ContextMenu::kRuler) return kRuler;
    if (menu == ContextMenu::kSoundViewSelection) return kSelection;
    return kNormal;
}

}  // namespace sonavel
