# Sparkle 2, the software update framework of Quillet.app: downloaded once at configure time from
# Sparkle's own release archive, pinned by version and SHA-256, so that every build embeds the
# same bytes. Included only on Apple platforms, and only with -DQUILLET_SPARKLE=ON.
#
# Sets QUILLET_SPARKLE_DIR, the unpacked archive: Sparkle.framework, and bin/ with
# generate_appcast, sign_update and generate_keys (used by packaging/release.sh).

include(FetchContent)
# Unpacked files get the time of the unpacking, so that a new pin rebuilds what depends on them.
if(POLICY CMP0135)
    cmake_policy(SET CMP0135 NEW)
endif()

set(QUILLET_SPARKLE_VERSION "2.9.6")
set(QUILLET_SPARKLE_SHA256 "52bf9e88cdd972fc0c81501377a880e90d47031bd8ca5462488f843e2609e192")

FetchContent_Declare(sparkle
    URL "https://github.com/sparkle-project/Sparkle/releases/download/${QUILLET_SPARKLE_VERSION}/Sparkle-${QUILLET_SPARKLE_VERSION}.tar.xz"
    URL_HASH "SHA256=${QUILLET_SPARKLE_SHA256}")
# The archive holds no CMakeLists.txt, so this only downloads, checks and unpacks it.
FetchContent_MakeAvailable(sparkle)

set(QUILLET_SPARKLE_DIR "${sparkle_SOURCE_DIR}")
if(NOT EXISTS "${QUILLET_SPARKLE_DIR}/Sparkle.framework/Versions/B/Sparkle")
    message(FATAL_ERROR "Sparkle ${QUILLET_SPARKLE_VERSION}: no Sparkle.framework (version B) in "
                        "${QUILLET_SPARKLE_DIR}")
endif()
message(STATUS "Sparkle ${QUILLET_SPARKLE_VERSION}: ${QUILLET_SPARKLE_DIR}")
