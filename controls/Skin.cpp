#include "controls/Skin.h"
#include <algorithm>
#include <cmath>

namespace {

constexpr int kRoleColours[] = {
    /* Form */ 4,         /* FormText */ 7,   /* DisabledText */ 3,   /* List */ 8,
    /* ListText */ 7,
    /* Editor */ 12,      /* EditorText */ 7, /* Fixed */ 1,          /* FixedText */ 14,
    /* Button */ 16,
    /* ButtonText */ 14,  /* Selection */ 7,  /* SelectionText */ 12, /* Border */ 1,
    /* Focus */ 15,
    /* BarTop */ 8,       /* BarBottom */ 4,  /* BarHeader */ 12,     /* BarHeaderText */ 14,
    /* BarItemText */ 14, /* BarHover */ 16,  /* BarHoverText */ 15,  /* NullGround */ 4,
};
static_assert(std::size(kRoleColours) == size_t(SkinRole::Count));

double Linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor &colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

} // namespace

QColor SkinColour(SkinRole role)
{
    return SkinColour(kRoleColours[size_t(role)]);
}

const std::array<SkinPair, 12> &SkinPairs()
{
    static const std::array<SkinPair, 12> pairs = {{
        {"form", SkinRole::FormText, SkinRole::Form},
        {"list", SkinRole::ListText, SkinRole::List},
        {"editor", SkinRole::EditorText, SkinRole::Editor},
        {"fixed cell", SkinRole::FixedText, SkinRole::Fixed},
        {"button", SkinRole::ButtonText, SkinRole::Button},
        {"selection", SkinRole::SelectionText, SkinRole::Selection},
        {"bar header", SkinRole::BarHeaderText, SkinRole::BarHeader},
        {"menu, bar entry above", SkinRole::BarItemText, SkinRole::BarTop},
        {"bar entry below", SkinRole::BarItemText, SkinRole::BarBottom},
        {"bar entry under the pointer", SkinRole::BarHoverText, SkinRole::BarHover},
        {"menu bar, toolbars, status bar", SkinRole::FixedText, SkinRole::Form},
        {"second rows", SkinRole::ListText, SkinRole::NullGround},
    }};
    return pairs;
}

double Contrast(const QColor &text, const QColor &ground)
{
    const double a = Luminance(text), b = Luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}
