#!/usr/bin/env bash
# Installs the validator into FOLDER, which holds package.json and package-lock.json, unless it is there and no
# older than they are: install.sh FOLDER
set -euo pipefail
cd "$1"
# npm writes this file last.
[[ node_modules/.package-lock.json -nt package-lock.json ]] && exit
npm ci --ignore-scripts --no-audit --no-fund --loglevel=error
