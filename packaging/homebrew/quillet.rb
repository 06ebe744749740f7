# Homebrew cask of Quillet, for a tap:  brew install --cask quillet
# packaging/release.sh writes `version` and `sha256` here when it makes a DMG; the values below
# are those of the last release made (none yet: the sha256 is a placeholder until then).
cask "quillet" do
  version "0.1.0"
  sha256 "0000000000000000000000000000000000000000000000000000000000000000"

  url "https://quillet.app/releases/Quillet-#{version}.dmg"
  name "Quillet"
  desc "Menu bar manager that hides, reveals and arranges status items"
  homepage "https://quillet.app/"

  livecheck do
    url "https://quillet.app/appcast.xml"
    strategy :sparkle
  end

  # Released builds update themselves with Sparkle.
  auto_updates true
  depends_on macos: ">= :ventura"

  app "Quillet.app"

  uninstall quit: "app.quillet.Quillet"

  # Named from the bundle identifier: the user defaults (every setting, rule and profile) and
  # what Sparkle keeps between update checks.
  zap trash: [
    "~/Library/Caches/app.quillet.Quillet",
    "~/Library/HTTPStorages/app.quillet.Quillet",
    "~/Library/HTTPStorages/app.quillet.Quillet.binarycookies",
    "~/Library/Preferences/app.quillet.Quillet.plist",
  ]
end
