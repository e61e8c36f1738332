#!/usr/bin/env bash
# Makes the kit as it would be shipped and unpacks it for the tests beside this file, where no name is plain.
set -euo pipefail
cd "$(dirname "$0")/../.."
folder=build/tests/kit
rm -rf -- "$folder"
mkdir -p "$folder"
tools/make-kit "$folder"
cd "$folder"
sha256sum -c --strict SHA256SUMS
unzip -q ./*-check.zip -d "Prüfung & mehr"
