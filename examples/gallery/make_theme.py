#!/usr/bin/python3
"""Makes a template with a theme of its own, "Harbour", from any document: make_theme.py DOCUMENT TEMPLATE"""

import re
import sys
import zipfile

COLORS = {
    "dk1": "2D2A26",
    "lt1": "FFFFFF",
    "dk2": "264653",
    "lt2": "F4F1EA",
    "accent1": "2A9D8F",
    "accent2": "E76F51",
    "accent3": "E9B44C",
    "accent4": "8AB17D",
    "accent5": "7A9CC6",
    "accent6": "9A6D8E",
    "hlink": "2A9D8F",
    "folHlink": "9A6D8E",
}
FONT = "Cambria"


def paint(theme):
    for name, color in COLORS.items():
        theme = re.sub(rf"(<a:{name}>).*?(</a:{name}>)", rf'\1<a:srgbClr val="{color}"/>\2', theme, flags=re.DOTALL)
    return re.sub(r'(<a:(?:major|minor)Font><a:latin typeface=")[^"]*', rf"\g<1>{FONT}", theme)


def make_theme(document, template):
    with zipfile.ZipFile(document) as source, zipfile.ZipFile(template, "w", zipfile.ZIP_DEFLATED) as target:
        for entry in source.infolist():
            content = source.read(entry)
            if entry.filename == "word/theme/theme1.xml":
                content = paint(content.decode()).encode()
            target.writestr(entry, content)


if __name__ == "__main__":
    make_theme(*sys.argv[1:])
