#!/usr/bin/env bash
# Makes a Quillet release on a Mac: runs the tests, builds Quillet.app with Sparkle as a universal
# app (Apple silicon and Intel: left alone, CMake builds for this Mac's architecture only), signed
# with a Developer ID (packaging/sign-app.sh), notarizes and staples it, puts it in a signed,
# notarized and stapled DMG, and adds the DMG to the Sparkle appcast with Sparkle's
# generate_appcast.
#
#   packaging/release.sh [--dry-run]
#
# --dry-run prints every command instead of running it (missing credentials show as <NAME>).
# Credentials, all checked before anything runs:
#   QUILLET_SIGNING_IDENTITY          "Developer ID Application: Name (TEAMID)", in the keychain
#   QUILLET_NOTARY_PROFILE            a notarytool keychain profile (xcrun notarytool
#                                     store-credentials), or instead an App Store Connect API key:
#   QUILLET_NOTARY_KEY, QUILLET_NOTARY_KEY_ID, QUILLET_NOTARY_ISSUER
#   QUILLET_SPARKLE_FEED_URL          where appcast.xml is published (SUFeedURL)
#   QUILLET_SPARKLE_PUBLIC_KEY        the EdDSA public key (SUPublicEDKey, from generate_keys)
#   QUILLET_SPARKLE_PRIVATE_KEY_FILE  its private key, exported with generate_keys -x
#   QUILLET_DOWNLOAD_URL_PREFIX       where the DMGs are published, ending in /
#                                     (the cask's url expects https://quillet.app/releases/)
# Output: dist/Quillet-VERSION.dmg, the appcast beside it (named as the feed URL's last part,
# e.g. dist/appcast.xml; generate_appcast keeps its earlier entries), and
# packaging/homebrew/quillet.rb updated to this version and DMG.
set -euo pipefail
cd "$(dirname "$0")/.."

dry_run=false
case "${1:-}" in
    "") ;;
    --dry-run) dry_run=true ;;
    *)
        echo "usage: $0 [--dry-run]" >&2
        exit 2
        ;;
esac

fail() {
    echo "release.sh: $*" >&2
    exit 1
}

# Runs a command, or prints it (shell-quoted) in a dry run.
run() {
    if $dry_run; then
        printf '%q ' "$@"
        printf '\n'
    else
        "$@"
    fi
}

missing=()
# The value of a required credential; a missing one is noted here and reported below.
credential() {
    local name="$1"
    if [ -n "${!name:-}" ]; then
        printf '%s' "${!name}"
    else
        printf '<%s>' "$name"
    fi
}
require() {
    local name
    for name in "$@"; do
        [ -n "${!name:-}" ] || missing+=("$name")
    done
}

require QUILLET_SIGNING_IDENTITY QUILLET_SPARKLE_FEED_URL QUILLET_SPARKLE_PUBLIC_KEY \
    QUILLET_SPARKLE_PRIVATE_KEY_FILE QUILLET_DOWNLOAD_URL_PREFIX
if [ -n "${QUILLET_NOTARY_PROFILE:-}" ]; then
    notary_auth=(--keychain-profile "$QUILLET_NOTARY_PROFILE")
else
    require QUILLET_NOTARY_KEY QUILLET_NOTARY_KEY_ID QUILLET_NOTARY_ISSUER
    notary_auth=(--key "$(credential QUILLET_NOTARY_KEY)"
        --key-id "$(credential QUILLET_NOTARY_KEY_ID)"
        --issuer "$(credential QUILLET_NOTARY_ISSUER)")
fi
problems=()
[ ${#missing[@]} -eq 0 ] || problems+=("missing credentials: ${missing[*]} (see the top of $0)")
# Values that would otherwise fail only after the build and an upload to the notary service, or
# not at all: the notary service accepts only Developer ID signatures, and generate_appcast
# resolves each DMG's name against the prefix as a URL, dropping its last part unless it ends in /.
case "${QUILLET_SIGNING_IDENTITY:-}" in
    "" | "Developer ID Application: "*) ;;
    *) problems+=("QUILLET_SIGNING_IDENTITY is not a \"Developer ID Application: …\" identity") ;;
esac
case "${QUILLET_DOWNLOAD_URL_PREFIX:-}" in
    "" | */) ;;
    *) problems+=("QUILLET_DOWNLOAD_URL_PREFIX does not end in /") ;;
esac
if [ ${#problems[@]} -gt 0 ]; then
    printf 'release.sh: %s\n' "${problems[@]}" >&2
    $dry_run || exit 1
    echo "release.sh: dry run; going on" >&2
fi
private_key="$(credential QUILLET_SPARKLE_PRIVATE_KEY_FILE)"
identity="$(credential QUILLET_SIGNING_IDENTITY)"
if ! $dry_run; then
    [ -f "$private_key" ] || fail "QUILLET_SPARKLE_PRIVATE_KEY_FILE: no file at $private_key"
    for tool in cmake codesign ditto hdiutil lipo xcrun plutil security shasum; do
        command -v "$tool" >/dev/null || fail "$tool is missing (this runs on a Mac with Xcode)"
    done
    identities="$(security find-identity -v -p codesigning)"
    [[ "$identities" == *"\"$identity\""* ]] ||
        fail "no valid \"$identity\" in the keychains (security find-identity -v -p codesigning)"
fi

version="$(sed -n 's/^project(Quillet VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
[ -n "$version" ] || fail "no version in CMakeLists.txt's project()"
# Fresh build trees of their own: a tree left from an earlier build would keep an app signed with
# whatever identity it was built with, since only a relink signs again.
tests="build-dist-tests"
build="build-dist"
app="$build/src/macos/Quillet.app"
dist=dist
dmg="$dist/Quillet-$version.dmg"
work="$build/release"

# Submits a file to Apple's notary service and waits; fails unless it is accepted.
notarize() {
    local file="$1" result status
    result="$work/notary-$(basename "$file").json"
    if $dry_run; then
        run xcrun notarytool submit "$file" "${notary_auth[@]}" --wait
        return
    fi
    xcrun notarytool submit "$file" "${notary_auth[@]}" --wait --output-format json >"$result"
    status="$(plutil -extract status raw -o - "$result")"
    if [ "$status" != Accepted ]; then
        xcrun notarytool log "$(plutil -extract id raw -o - "$result")" "${notary_auth[@]}" >&2 || true
        fail "notarization of $file: $status"
    fi
}

echo "== Quillet $version: tests, on this Mac's architecture (Homebrew's test libraries have no other)"
run rm -rf "$tests" "$build"
run cmake -S . -B "$tests" -DCMAKE_BUILD_TYPE=Release -DQUILLET_BUILD_BENCH=OFF
run cmake --build "$tests" --config Release
run ctest --test-dir "$tests" --output-on-failure

echo "== the universal app: build and sign"
run cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release "-DCMAKE_OSX_ARCHITECTURES=arm64;x86_64" \
    -DQUILLET_BUILD_TESTS=OFF -DQUILLET_BUILD_BENCH=OFF -DQUILLET_SPARKLE=ON \
    "-DQUILLET_CODESIGN_IDENTITY=$identity" \
    "-DQUILLET_SPARKLE_FEED_URL=$(credential QUILLET_SPARKLE_FEED_URL)" \
    "-DQUILLET_SPARKLE_PUBLIC_KEY=$(credential QUILLET_SPARKLE_PUBLIC_KEY)"
run cmake --build "$build" --config Release --target Quillet
if $dry_run; then
    run lipo -archs "$app/Contents/MacOS/Quillet"
else
    archs=" $(lipo -archs "$app/Contents/MacOS/Quillet") "
    [[ "$archs" == *" arm64 "* && "$archs" == *" x86_64 "* ]] || fail "Quillet is not universal:$archs"
fi
run mkdir -p "$work/dmg" "$dist"

echo "== notarize and staple the app"
run ditto -c -k --keepParent "$app" "$work/Quillet.zip"
notarize "$work/Quillet.zip"
run xcrun stapler staple "$app"

echo "== DMG: sign, notarize, staple"
run ditto "$app" "$work/dmg/Quillet.app"
run ln -s /Applications "$work/dmg/Applications"
run hdiutil create -volname "Quillet $version" -srcfolder "$work/dmg" -format UDZO -ov "$dmg"
run codesign --force --sign "$identity" --timestamp "$dmg"
notarize "$dmg"
run xcrun stapler staple "$dmg"
run xcrun stapler validate "$dmg"

echo "== Homebrew cask: this version and the DMG's checksum"
if $dry_run; then
    checksum="<sha256>"
else
    checksum="$(shasum -a 256 "$dmg" | cut -d ' ' -f 1)"
fi
run sed -i '' -e "s/^  version \".*\"/  version \"$version\"/" \
    -e "s/^  sha256 \".*\"/  sha256 \"$checksum\"/" packaging/homebrew/quillet.rb

echo "== appcast"
run "$build/_deps/sparkle-src/bin/generate_appcast" --ed-key-file "$private_key" \
    --download-url-prefix "$(credential QUILLET_DOWNLOAD_URL_PREFIX)" "$dist"
echo "== done: publish $dmg under $(credential QUILLET_DOWNLOAD_URL_PREFIX), the appcast in $dist at $(credential QUILLET_SPARKLE_FEED_URL)"
