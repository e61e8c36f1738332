#!/usr/bin/env bash
# Makes the package and the kit as they would be shipped and unpacks them for their tests; the kit where no name is plain.
set -euo pipefail
cd "$(dirname "$0")/../../.."
folder=build/tests/package
rm -rf -- "$folder"
tools/make-package "$folder"
tools/make-kit "$folder"
cd "$folder"
sha256sum -c --strict SHA256SUMS
cp ./*-setup.exe setup.exe
unzip -q ./*-win64.zip -d portable
unzip -q ./*-check.zip -d "Prüfung & mehr"
