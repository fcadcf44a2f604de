#include "Platform/Linux/Window/KeyTable.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Platform {

namespace {

constexpr std::uint8_t kKernelOffset = 8;
constexpr std::uint8_t kLastPlainKey = 88;  // up to F12 the kernel's numbers are the keyboard's

struct ExtendedKey {
    std::uint8_t kernel;
    std::uint8_t scan;
};

constexpr std::array<ExtendedKey, 18> kExtended{{{96, 0x1C},
                                                 {97, 0x1D},
                                                 {98, 0x35},
                                                 {99, 0x37},
                                                 {100, 0x38},
                                                 {102, 0x47},
                                                 {103, 0x48},
                                                 {104, 0x49},
                                                 {105, 0x4B},
                                                 {106, 0x4D},
                                                 {107, 0x4F},
                                                 {108, 0x50},
                                                 {109, 0x51},
                                                 {110, 0x52},
                                                 {111, 0x53},
                                                 {125, 0x5B},
                                                 {126, 0x5C},
                                                 {127, 0x5D}}};

struct SymbolKey {
    std::uint32_t symbol;
    int key;
};

constexpr SymbolKey kSymbols[] = {
    {XKB_KEY_BackSpace, VK_BACK},
    {XKB_KEY_Tab, VK_TAB},
    {XKB_KEY_ISO_Left_Tab, VK_TAB},
    {XKB_KEY_Clear, VK_CLEAR},
    {XKB_KEY_Return, VK_RETURN},
    {XKB_KEY_KP_Enter, VK_RETURN},
    {XKB_KEY_Shift_L, VK_SHIFT},
    {XKB_KEY_Shift_R, VK_SHIFT},
    {XKB_KEY_Control_L, VK_CONTROL},
    {XKB_KEY_Control_R, VK_CONTROL},
    {XKB_KEY_Alt_L, VK_MENU},
    {XKB_KEY_Alt_R, VK_MENU},
    {XKB_KEY_Pause, VK_PAUSE},
    {XKB_KEY_Caps_Lock, VK_CAPITAL},
    {XKB_KEY_Escape, VK_ESCAPE},
    {XKB_KEY_space, VK_SPACE},
    {XKB_KEY_Prior, VK_PRIOR},
    {XKB_KEY_Next, VK_NEXT},
    {XKB_KEY_End, VK_END},
    {XKB_KEY_Home, VK_HOME},
    {XKB_KEY_Left, VK_LEFT},
    {XKB_KEY_Up, VK_UP},
    {XKB_KEY_Right, VK_RIGHT},
    {XKB_KEY_Down, VK_DOWN},
    {XKB_KEY_Print, VK_SNAPSHOT},
    {XKB_KEY_Insert, VK_INSERT},
    {XKB_KEY_Delete, VK_DELETE},
    {XKB_KEY_Super_L, VK_LWIN},
    {XKB_KEY_Super_R, VK_RWIN},
    {XKB_KEY_Menu, VK_APPS},
    {XKB_KEY_KP_Prior, VK_PRIOR},
    {XKB_KEY_KP_Next, VK_NEXT},
    {XKB_KEY_KP_End, VK_END},
    {XKB_KEY_KP_Home, VK_HOME},
    {XKB_KEY_KP_Left, VK_LEFT},
    {XKB_KEY_KP_Up, VK_UP},
    {XKB_KEY_KP_Right, VK_RIGHT},
    {XKB_KEY_KP_Down, VK_DOWN},
    {XKB_KEY_KP_Begin, VK_CLEAR},
    {XKB_KEY_KP_Insert, VK_INSERT},
    {XKB_KEY_KP_Delete, VK_DELETE},
    {XKB_KEY_KP_Multiply, VK_MULTIPLY},
    {XKB_KEY_KP_Add, VK_ADD},
    {XKB_KEY_KP_Subtract, VK_SUBTRACT},
    {XKB_KEY_KP_Divide, VK_DIVIDE},
    {XKB_KEY_KP_Decimal, VK_DECIMAL},
    {XKB_KEY_Num_Lock, VK_NUMLOCK},
    {XKB_KEY_Scroll_Lock, VK_SCROLL},
    {XKB_KEY_semicolon, VK_OEM_1},
    {XKB_KEY_equal, VK_OEM_PLUS},
    {XKB_KEY_plus, VK_OEM_PLUS},
    {XKB_KEY_comma, VK_OEM_COMMA},
    {XKB_KEY_minus, VK_OEM_MINUS},
    {XKB_KEY_period, VK_OEM_PERIOD},
    {XKB_KEY_slash, VK_OEM_2},
    {XKB_KEY_grave, VK_OEM_3},
    {XKB_KEY_bracketleft, VK_OEM_4},
    {XKB_KEY_backslash, VK_OEM_5},
    {XKB_KEY_bracketright, VK_OEM_6},
    {XKB_KEY_apostrophe, VK_OEM_7},
};

struct Row {
    std::uint8_t firstKernel;
    std::string_view keys;
};

constexpr std::array<Row, 4> kRows{{{2, "1234567890"}, {16, "QWERTYUIOP"}, {30, "ASDFGHJKL"}, {44, "ZXCVBNM"}}};

}  // namespace

ScanCode ScanCodeOf(std::uint8_t keycode) {
    if (keycode < kKernelOffset) return {};
    const auto kernel = static_cast<std::uint8_t>(keycode - kKernelOffset);
    if (kernel <= kLastPlainKey) return {kernel, false};
    const auto found = std::ranges::find(kExtended, kernel, &ExtendedKey::kernel);
    return found == kExtended.end() ? ScanCode{} : ScanCode{found->scan, true};
}

int VirtualKeyOfSymbol(std::uint32_t symbol) {
    if (symbol >= XKB_KEY_a && symbol <= XKB_KEY_z) return 'A' + static_cast<int>(symbol - XKB_KEY_a);
    if (symbol >= XKB_KEY_A && symbol <= XKB_KEY_Z) return 'A' + static_cast<int>(symbol - XKB_KEY_A);
    if (symbol >= XKB_KEY_0 && symbol <= XKB_KEY_9) return '0' + static_cast<int>(symbol - XKB_KEY_0);
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F24) return VK_F1 + static_cast<int>(symbol - XKB_KEY_F1);
    if (symbol >= XKB_KEY_KP_0 && symbol <= XKB_KEY_KP_9) return VK_NUMPAD0 + static_cast<int>(symbol - XKB_KEY_KP_0);
    const auto found = std::ranges::find(kSymbols, symbol, &SymbolKey::symbol);
    return found == std::end(kSymbols) ? 0 : found->key;
}

int VirtualKeyOfPlace(std::uint8_t keycode) {
    for (const Row& row : kRows) {
        const int index = keycode - kKernelOffset - row.firstKernel;
        if (index >= 0 && static_cast<std::size_t>(index) < row.keys.size()) {
            return row.keys[static_cast<std::size_t>(index)];
        }
    }
    return 0;
}

}  // namespace Platform
