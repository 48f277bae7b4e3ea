#!/usr/bin/env bash
# Fills FOLDER with the documents to validate, FOLDER/filled with those whose charts took other data, and
# FOLDER/others with those that another library packages:
# make_documents.sh BIN EXAMPLES FOLDER PYTHON_FOLDER
# Without a PYTHON_FOLDER, those that Python makes are left out.
set -euo pipefail
tests=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
bin=$1
examples=$2
folder=$3
python=$4

rm -rf "$folder"
mkdir -p "$folder/others" "$folder/filled"
"$bin/random_charts" "$folder"
"$examples/demo.sh" "$bin/quillon-report" "$folder" --no-pictures
"$bin/first_chart" "$folder/first_chart.docx"
PATH="$bin:$PATH" "$examples/gallery/make_gallery.py" documents "$folder"
# Made with shared libraries only.
[[ ! -x $bin/chart_by_names ]] || "$bin/chart_by_names" "$folder/chart_by_names.docx"
/usr/bin/python3 "$tests/../report/fill/make_templates.py" "$bin/quillon-report" "$folder/templates"
"$bin/fill_documents" "$folder/filled" "$folder"/{demo,random-1,random-2}.docx "$folder/templates/places.docx"

[[ -n $python ]] || exit 0
export PYTHONPATH=$python:$tests/../python
cd "$folder"
for example in "$examples"/python/*.py; do
    [[ $example == */into_python_docx.py ]] || /usr/bin/python3 "$example"
done
cd others
/usr/bin/python3 "$examples/python/into_python_docx.py"
/usr/bin/python3 "$tests/reopen_document.py" "$folder/demo.docx" reopened.docx
