#!/usr/bin/env bash
# Makes the pictures of docs/options.md from its examples: docs/make_option_pictures.sh QUILLON_REPORT
# Needs LibreOffice, pdftoppm and the typefaces below: others are wider or narrower, and every picture would change.
# ./run gallery installs what is missing, and calls this.
set -euo pipefail
for face in "Carlito fonts-crosextra-carlito" "Liberation Serif fonts-liberation"; do
    [[ -n $(fc-list "${face% *}") ]] || { echo "The pictures want ${face% *}, of the package ${face##* }." >&2; exit 1; }
done
report=$(realpath "$1")
docs=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$docs"/../examples/data/*.csv "$scratch"
mkdir -p "$docs/images/options"
cd "$scratch"

# An example stands above its picture.
while IFS= read -r line; do
    case $line in
    "    quillon-report "*) arguments=${line#    quillon-report } ;;
    "!["*)
        name=$(basename "${line#*(}" .png\))
        eval "words=($arguments)"
        "$report" --width 4in --height 2.3in "${words[@]}" -o "$name.docx"
        ;;
    esac
done < "$docs/options.md"

soffice --headless "-env:UserInstallation=file://$scratch/office" --convert-to pdf ./*.docx >/dev/null 2>&1
for file in *.pdf; do
    # The chart alone, at the margins of the page.
    width=245
    [[ $file == float.pdf ]] && width=380
    pdftoppm -png -r 60 -singlefile -x 58 -y 58 -W $width -H 142 "$file" "$docs/images/options/${file%.pdf}"
done
du -sh "$docs/images/options"
