#!/usr/bin/env bash
# Makes the pictures of docs/report.md and docs/filling.md: docs/make_report_pictures.sh QUILLON_REPORT
# Needs LibreOffice and pdftoppm.
set -euo pipefail
report=$(realpath "$1")
docs=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
examples=$docs/../examples
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

"$report" --job "$examples/reports/quarterly.json" -o report.pdf
"$report" --job "$examples/reports/template.json" -o june.docx
"$report" fill june.docx "$examples/data/july.csv" --chart Visits \
    "$examples/data/margin.csv" --at margin --type line --height 6cm --number-format 0% --text month=July -o july.docx
soffice --headless "-env:UserInstallation=file://$scratch/office" --convert-to pdf june.docx july.docx >/dev/null 2>&1
pdftoppm -png -r 60 report.pdf "$docs/images/report"
for month in june july; do
    pdftoppm -png -r 60 -singlefile -H 560 "$month.pdf" "$docs/images/filling-$month"
done
ls -l "$docs"/images/report-*.png "$docs"/images/filling-*.png
