#!/usr/bin/env bash
# Signs Quillet.app from the inside out, as codesign requires: each piece of code is sealed before
# the bundle that contains it. Sparkle's XPC services, its Autoupdate tool and Updater.app come
# first, then Sparkle.framework, then the app with its entitlements. No --deep: it would give
# every nested piece the app's entitlements.
#
#   packaging/sign-app.sh APP IDENTITY ENTITLEMENTS
#
# IDENTITY is a Developer ID Application identity (a notarizable release: secure timestamp) or
# "-" (ad hoc, for local builds). Every piece gets the hardened runtime, which notarization
# requires. Library validation, part of that runtime, may refuse a framework signed ad hoc, so an
# ad hoc build that embeds Sparkle adds the entitlement that disables it; a Developer ID build
# never does.
set -euo pipefail

if [ $# -ne 3 ]; then
    echo "usage: $0 APP IDENTITY ENTITLEMENTS" >&2
    exit 2
fi
app="$1"
identity="$2"
entitlements="$3"

sparkle="$app/Contents/Frameworks/Sparkle.framework"
options=(--force --sign "$identity" --options runtime)
if [ "$identity" = "-" ]; then
    options+=(--timestamp=none)
else
    options+=(--timestamp)
fi
if [ "$identity" = "-" ] && [ -d "$sparkle" ]; then
    work="$(mktemp -d)"
    trap 'rm -rf "$work"' EXIT
    cp "$entitlements" "$work/adhoc.entitlements"
    /usr/libexec/PlistBuddy -c "Add :com.apple.security.cs.disable-library-validation bool true" \
        "$work/adhoc.entitlements"
    entitlements="$work/adhoc.entitlements"
fi

if [ -d "$sparkle" ]; then
    codesign "${options[@]}" "$sparkle/Versions/B/XPCServices/Installer.xpc"
    # The downloader keeps whatever entitlements Sparkle signed it with: none that sandbox it by
    # default since Sparkle 2.6, but a Sparkle built with a sandboxed downloader needs them kept.
    codesign "${options[@]}" --preserve-metadata=entitlements \
        "$sparkle/Versions/B/XPCServices/Downloader.xpc"
    codesign "${options[@]}" "$sparkle/Versions/B/Autoupdate"
    codesign "${options[@]}" "$sparkle/Versions/B/Updater.app"
    codesign "${options[@]}" "$sparkle"
fi
codesign "${options[@]}" --entitlements "$entitlements" "$app"
codesign --verify --strict --deep "$app"
