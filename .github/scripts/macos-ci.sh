#!/usr/bin/env bash
# The macOS CI job: build Quillet.app with warnings as errors, run the tests, check the bundle and
# its signature, and smoke-run the app's --list-items mode, whose output must be the JSON listing.
# With Sparkle, also build the universal app that packaging/release.sh ships, so that a warning
# only the Intel slice raises fails here rather than during a release.
#
#   QUILLET_SPARKLE=ON|OFF .github/scripts/macos-ci.sh
set -euo pipefail
cd "$(dirname "$0")/../.."

sparkle="${QUILLET_SPARKLE:-OFF}"
app=build/src/macos/Quillet.app
info="$app/Contents/Info.plist"

echo "== toolchain"
xcodebuild -version
cmake --version | head -n 1
brew install --quiet nlohmann-json googletest google-benchmark

echo "== build (Sparkle: $sparkle) and test"
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DQUILLET_WERROR=ON -DQUILLET_SPARKLE="$sparkle"
cmake --build build -j "$(sysctl -n hw.ncpu)"
ctest --test-dir build --output-on-failure

echo "== bundle"
plutil -lint "$info"
version="$(sed -n 's/^project(Quillet VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
for key in CFBundleShortVersionString CFBundleVersion; do
    value="$(/usr/libexec/PlistBuddy -c "Print :$key" "$info")"
    [ "$value" = "$version" ] || { echo "$key is '$value', CMakeLists.txt says '$version'" >&2; exit 1; }
done
test -f "$app/Contents/Resources/$(/usr/libexec/PlistBuddy -c "Print :CFBundleIconFile" "$info").icns"
# Built without a feed and a key, the bundle must name neither: Sparkle would refuse to start.
for key in SUFeedURL SUPublicEDKey; do
    if /usr/libexec/PlistBuddy -c "Print :$key" "$info" >/dev/null 2>&1; then
        echo "$key is in Info.plist although no feed and key were configured" >&2
        exit 1
    fi
done
if [ "$sparkle" = ON ]; then
    test -d "$app/Contents/Frameworks/Sparkle.framework/Versions/B/XPCServices/Installer.xpc"
    [[ "$(otool -L "$app/Contents/MacOS/Quillet")" == *@rpath/Sparkle.framework* ]]
fi
codesign --verify --strict --deep --verbose=2 "$app"
[[ "$(codesign --display --verbose=2 "$app" 2>&1)" == *flags=*runtime* ]]

echo "== smoke run: Quillet --list-items"
"$app/Contents/MacOS/Quillet" --list-items > build/list-items.json
python3 - build/list-items.json <<'PY'
import json, sys
listing = json.load(open(sys.argv[1]))
assert isinstance(listing, dict) and listing["count"] == len(listing["items"]), listing
print(f"valid JSON listing of {listing['count']} items")
PY

if [ "$sparkle" = ON ]; then
    echo "== the universal app, as packaging/release.sh builds it"
    cmake -S . -B build-universal -DCMAKE_BUILD_TYPE=Release -DQUILLET_WERROR=ON \
        "-DCMAKE_OSX_ARCHITECTURES=arm64;x86_64" -DQUILLET_BUILD_TESTS=OFF -DQUILLET_BUILD_BENCH=OFF \
        -DQUILLET_SPARKLE=ON
    cmake --build build-universal -j "$(sysctl -n hw.ncpu)" --target Quillet
    universal=build-universal/src/macos/Quillet.app
    archs=" $(lipo -archs "$universal/Contents/MacOS/Quillet") "
    [[ "$archs" == *" arm64 "* && "$archs" == *" x86_64 "* ]] || { echo "not universal:$archs" >&2; exit 1; }
    codesign --verify --strict --deep --verbose=2 "$universal"
fi
