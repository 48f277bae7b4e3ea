#!/usr/bin/env bash
# Installs the npm packages of FOLDER, which holds package.json and package-lock.json, unless they are there and no
# older than they are: npm-install.sh FOLDER
set -euo pipefail
cd "$1"
# npm writes this file last.
[[ node_modules/.package-lock.json -nt package-lock.json ]] && exit
npm ci --ignore-scripts --no-audit --no-fund --loglevel=error
