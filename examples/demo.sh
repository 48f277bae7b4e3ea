#!/usr/bin/env bash
# Makes FOLDER/demo.docx with one chart of each type: examples/demo.sh QUILLON_REPORT FOLDER [--no-pictures]
# Where LibreOffice is installed, it also makes a PDF of the document, and pictures of its pages.
set -euo pipefail
report=$1
folder=$2
data=$(dirname "${BASH_SOURCE[0]}")/data

mkdir -p "$folder"
"$report" \
    "$data/revenue.csv" --type column --title "Revenue in millions" --heading "Revenue" \
    "$data/satisfaction.csv" --type bar --title "Would you work here again?" --heading "Satisfaction" \
    --colors 'seagreen,rgb(200,80,60)' --legend right \
    "$data/temperature.csv" --type line --title "Mean temperature" --heading "Climate" \
    --series Place --value Temperature \
    "$data/energy.csv" --type pie --title "Where the power comes from" --heading "Energy" \
    --colors 'steelblue,gold,#70AD47,gray,silver' --legend right \
    -o "$folder/demo.docx"
echo "$folder/demo.docx"

if [[ ${3:-} != --no-pictures ]] && command -v soffice >/dev/null && command -v pdftoppm >/dev/null; then
    soffice --headless --convert-to pdf --outdir "$folder" "$folder/demo.docx" >/dev/null 2>&1
    pdftoppm -png -r 80 "$folder/demo.pdf" "$folder/demo"
    ls "$folder"/demo.pdf "$folder"/demo-*.png
fi
