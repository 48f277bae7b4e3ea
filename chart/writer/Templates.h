#pragma once

/// The fixed blocks of markup. A block holds no white space between its elements, because a parser would keep
/// it.
namespace quillon::chart::templates {

// clang-format off: one line an element, or a few that belong together.

/// The title; the text of its run takes the place of "Chart Title".
inline constexpr char16_t title[] =
    uR"(
<c:title><c:tx><c:rich>)"
    uR"(<a:bodyPr rot="0" spcFirstLastPara="1" vertOverflow="ellipsis" vert="horz" wrap="square" anchor="ctr" anchorCtr="1"/>)"
    uR"(<a:lstStyle/>)"
    uR"(<a:p>)"
    uR"(<a:pPr><a:defRPr sz="1400" b="0" i="0" u="none" strike="noStrike" kern="1200" spc="0" baseline="0">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="65000"/><a:lumOff val="35000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:latin typeface="+mn-lt"/><a:ea typeface="+mn-ea"/><a:cs typeface="+mn-cs"/>)"
    uR"(</a:defRPr></a:pPr>)"
    uR"(<a:r><a:rPr lang="en-US"/><a:t>Chart Title</a:t></a:r>)"
    uR"(<a:endParaRPr lang="en-US"/>)"
    uR"(</a:p>)"
    uR"(</c:rich></c:tx>)"
    uR"(<c:overlay val="0"/>)"
    uR"(<c:spPr><a:noFill/><a:ln><a:noFill/></a:ln><a:effectLst/></c:spPr>)"
    uR"(<c:txPr>)"
    uR"(<a:bodyPr rot="0" spcFirstLastPara="1" vertOverflow="ellipsis" vert="horz" wrap="square" anchor="ctr" anchorCtr="1"/>)"
    uR"(<a:lstStyle/>)"
    uR"(<a:p>)"
    uR"(<a:pPr><a:defRPr sz="1400" b="0" i="0" u="none" strike="noStrike" kern="1200" spc="0" baseline="0">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="65000"/><a:lumOff val="35000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:latin typeface="+mn-lt"/><a:ea typeface="+mn-ea"/><a:cs typeface="+mn-cs"/>)"
    uR"(</a:defRPr></a:pPr>)"
    uR"(<a:endParaRPr lang="en-US"/>)"
    uR"(</a:p>)"
    uR"(</c:txPr>)"
    uR"(</c:title>  )";

/// The category axis; both axis ids are overwritten.
inline constexpr char16_t categoryAxis[] =
    uR"(
<c:catAx>)"
    uR"(<c:axId val="600548848"/>)"
    uR"(<c:scaling><c:orientation val="minMax"/></c:scaling>)"
    uR"(<c:delete val="0"/>)"
    uR"(<c:axPos val="l"/>)"
    uR"(<c:numFmt formatCode="General" sourceLinked="1"/>)"
    uR"(<c:majorTickMark val="none"/>)"
    uR"(<c:minorTickMark val="none"/>)"
    uR"(<c:tickLblPos val="nextTo"/>)"
    uR"(<c:spPr><a:noFill/>)"
    uR"(<a:ln w="9525" cap="flat" cmpd="sng" algn="ctr">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="15000"/><a:lumOff val="85000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:round/></a:ln>)"
    uR"(<a:effectLst/></c:spPr>)"
    uR"(<c:txPr>)"
    uR"(<a:bodyPr rot="-60000000" spcFirstLastPara="1" vertOverflow="ellipsis" vert="horz" wrap="square" anchor="ctr" anchorCtr="1"/>)"
    uR"(<a:lstStyle/>)"
    uR"(<a:p>)"
    uR"(<a:pPr><a:defRPr sz="900" b="0" i="0" u="none" strike="noStrike" kern="1200" baseline="0">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="65000"/><a:lumOff val="35000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:latin typeface="+mn-lt"/><a:ea typeface="+mn-ea"/><a:cs typeface="+mn-cs"/>)"
    uR"(</a:defRPr></a:pPr>)"
    uR"(<a:endParaRPr lang="en-US"/>)"
    uR"(</a:p>)"
    uR"(</c:txPr>)"
    uR"(<c:crossAx val="640233328"/>)"
    uR"(<c:crosses val="autoZero"/>)"
    uR"(<c:auto val="1"/>)"
    uR"(<c:lblAlgn val="ctr"/>)"
    uR"(<c:lblOffset val="100"/>)"
    uR"(<c:noMultiLvlLbl val="0"/>)"
    uR"(</c:catAx>  )";

/// The value axis; both axis ids are overwritten.
inline constexpr char16_t valueAxis[] =
    uR"(
<c:valAx>)"
    uR"(<c:axId val="640233328"/>)"
    uR"(<c:scaling><c:orientation val="minMax"/></c:scaling>)"
    uR"(<c:delete val="0"/>)"
    uR"(<c:axPos val="b"/>)"
    uR"(<c:majorGridlines><c:spPr>)"
    uR"(<a:ln w="9525" cap="flat" cmpd="sng" algn="ctr">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="15000"/><a:lumOff val="85000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:round/></a:ln>)"
    uR"(<a:effectLst/></c:spPr></c:majorGridlines>)"
    uR"(<c:numFmt formatCode="General" sourceLinked="1"/>)"
    uR"(<c:majorTickMark val="none"/>)"
    uR"(<c:minorTickMark val="none"/>)"
    uR"(<c:tickLblPos val="nextTo"/>)"
    uR"(<c:spPr><a:noFill/><a:ln><a:noFill/></a:ln><a:effectLst/></c:spPr>)"
    uR"(<c:txPr>)"
    uR"(<a:bodyPr rot="-60000000" spcFirstLastPara="1" vertOverflow="ellipsis" vert="horz" wrap="square" anchor="ctr" anchorCtr="1"/>)"
    uR"(<a:lstStyle/>)"
    uR"(<a:p>)"
    uR"(<a:pPr><a:defRPr sz="900" b="0" i="0" u="none" strike="noStrike" kern="1200" baseline="0">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="65000"/><a:lumOff val="35000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:latin typeface="+mn-lt"/><a:ea typeface="+mn-ea"/><a:cs typeface="+mn-cs"/>)"
    uR"(</a:defRPr></a:pPr>)"
    uR"(<a:endParaRPr lang="en-US"/>)"
    uR"(</a:p>)"
    uR"(</c:txPr>)"
    uR"(<c:crossAx val="600548848"/>)"
    uR"(<c:crosses val="autoZero"/>)"
    uR"(<c:crossBetween val="between"/>)"
    uR"(</c:valAx>  )";

/// The legend, for later use: charts do not write one yet.
inline constexpr char16_t legend[] =
    uR"(
<c:legend>)"
    uR"(<c:legendPos val="b"/>)"
    uR"(<c:overlay val="0"/>)"
    uR"(<c:spPr><a:noFill/><a:ln><a:noFill/></a:ln><a:effectLst/></c:spPr>)"
    uR"(<c:txPr>)"
    uR"(<a:bodyPr rot="0" spcFirstLastPara="1" vertOverflow="ellipsis" vert="horz" wrap="square" anchor="ctr" anchorCtr="1"/>)"
    uR"(<a:lstStyle/>)"
    uR"(<a:p>)"
    uR"(<a:pPr><a:defRPr sz="900" b="0" i="0" u="none" strike="noStrike" kern="1200" baseline="0">)"
    uR"(<a:solidFill><a:schemeClr val="tx1"><a:lumMod val="65000"/><a:lumOff val="35000"/></a:schemeClr></a:solidFill>)"
    uR"(<a:latin typeface="+mn-lt"/><a:ea typeface="+mn-ea"/><a:cs typeface="+mn-cs"/>)"
    uR"(</a:defRPr></a:pPr>)"
    uR"(<a:endParaRPr lang="en-US"/>)"
    uR"(</a:p>)"
    uR"(</c:txPr>)"
    uR"(</c:legend>  )";

/// The shape properties of a series that is filled: bars, columns, slices.
inline constexpr char16_t seriesFill[] =
    uR"(<c:spPr>)"
    uR"(<a:solidFill><a:srgbClr val=""/></a:solidFill>)"
    uR"(<a:ln><a:noFill/></a:ln>)"
    uR"(<a:effectLst/>)"
    uR"(</c:spPr>)";

/// The shape properties of a series that is a line.
inline constexpr char16_t seriesLine[] =
    uR"(<c:spPr>)"
    uR"(<a:ln><a:solidFill><a:srgbClr val=""/></a:solidFill></a:ln>)"
    uR"(<a:effectLst/>)"
    uR"(</c:spPr>)";

/// A point with colours of its own; its index and both colours are overwritten.
inline constexpr char16_t dataPoint[] =
    uR"(<c:dPt>)"
    uR"(<c:idx val="0"/>)"
    uR"(<c:bubble3D val="0"/>)"
    uR"(<c:spPr>)"
    uR"(<a:solidFill><a:srgbClr val="FF0000"/></a:solidFill>)"
    uR"(<a:ln w="19050"><a:solidFill><a:srgbClr val="FF0000"/></a:solidFill></a:ln>)"
    uR"(<a:effectLst/>)"
    uR"(</c:spPr>)"
    uR"(</c:dPt>)";

// clang-format on

}  // namespace quillon::chart::templates
