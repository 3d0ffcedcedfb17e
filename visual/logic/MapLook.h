#pragma once
// The colours of a map: gray, or those of the skin. Colours are 0xBBGGRR. Pure.
//
// Tables and surface change at once. Of the join layers only the template does: a layer takes the template's colours
// when it is made and keeps them, so joins that stand keep their look.

#include <QtGlobal>

struct LayerLook
{
    qint32 Back = 0xFFFFFF, Fore = 0, Fill = 0;
};

struct SkinColours
{
    qint32 TableBack = 0xFFFFFF, TableFore = 0, MapBack = 0xFFFFFF, LayerBack = 0xFFFFFF, LayerFore = 0;
};

struct MapLook
{
    qint32 TableBack = 0xFFFFFF, TableFore = 0, SurfaceBack = 0xFFFFFF;
    LayerLook Template;

    void MakeGray() { *this = MapLook(); }
    void MakeColor(const SkinColours &skin)
    {
        TableBack = skin.TableBack;
        TableFore = skin.TableFore;
        SurfaceBack = skin.MapBack;
        Template.Back = skin.LayerBack;
        Template.Fore = skin.LayerFore; // the fill stays as it is
    }
};
