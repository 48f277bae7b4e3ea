#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/Paragraph.h"
#include "chart/model/Text.h"
#include "chart/model/TextBase.h"
#include "chart/model/Title.h"

/// The words of a chart, and their colours.
namespace quillon::chart::mi {

struct CosTextBase : CosClass<TextBase> {
    CosTextBase() : CosClass("What every text element has: a colour.")
    {
        constructor<>();
        constructor<std::u16string>({"color"});
        constructor<std::shared_ptr<Color>>({"color"});
        property<&TextBase::getColor, &TextBase::setColor>("Color", "The colour; empty for none.");
    }
};

struct CosText : CosClass<Text, TextBase> {
    CosText() : CosClass("A run: characters of one colour.")
    {
        constructor<>();
        constructor<std::u16string>({"content"});
        property<&Text::getContent, &Text::setContent>("Content", "The characters.");
    }
};

struct CosParagraph : CosClass<Paragraph, TextBase> {
    CosParagraph() : CosClass("An ordered list of runs.")
    {
        constructor<>();
        constructor<std::u16string>({"content"});
        constructor<std::shared_ptr<Text>>({"text"});
        property<&Paragraph::getContent>("Content", "The runs, in the order in which they are written.");
        method<&Paragraph::appendText>("appendText", {"text"}, "Appends a run and returns it.");
    }
};

struct CosTitle : CosClass<Title> {
    CosTitle() : CosClass("The title of a chart: one paragraph.")
    {
        constructor<>();
        constructor<std::u16string>({"text"});
        constructor<std::shared_ptr<Text>>({"text"});
        constructor<std::shared_ptr<Paragraph>>({"paragraph"});
        property<&Title::getText>("Text", "The paragraph.");
    }
};

}  // namespace quillon::chart::mi
