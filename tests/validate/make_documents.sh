#!/usr/bin/env bash
# Fills FOLDER with the documents to validate: make_documents.sh BIN EXAMPLES FOLDER
set -euo pipefail
bin=$1
examples=$2
folder=$3

rm -rf "$folder"
mkdir -p "$folder"
"$bin/random_charts" "$folder"
"$examples/demo.sh" "$bin/quillon-report" "$folder" --no-pictures
"$bin/first_chart" "$folder/first_chart.docx"
"$bin/chart_by_names" "$folder/chart_by_names.docx"
