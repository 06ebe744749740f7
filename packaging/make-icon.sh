#!/usr/bin/env bash
# Regenerates packaging/AppIcon.icns from packaging/AppIcon.svg on Debian or Ubuntu:
#   apt-get install librsvg2-bin icnsutils && packaging/make-icon.sh
# The .icns is committed, so that a Mac build needs neither tool.
set -euo pipefail

here="$(cd "$(dirname "$0")" && pwd)"
for tool in rsvg-convert png2icns; do
    if ! command -v "$tool" >/dev/null; then
        echo "make-icon.sh: $tool is missing (apt-get install librsvg2-bin icnsutils)" >&2
        exit 1
    fi
done

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# Every size png2icns stores; macOS picks the best one for each use (Finder, Dock, settings).
pngs=()
for size in 16 32 48 128 256 512 1024; do
    rsvg-convert --width "$size" --height "$size" "$here/AppIcon.svg" --output "$work/$size.png"
    pngs+=("$work/$size.png")
done
png2icns "$here/AppIcon.icns" "${pngs[@]}" >/dev/null
echo "wrote $here/AppIcon.icns"
