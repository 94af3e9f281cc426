#include "profiles.h"

#include <vellum/device_state.h>

#include <algorithm>
#include <vector>

namespace tessaly::simulator {

namespace {

namespace state = vellum::state;

const std::vector<Profile>& profiles() {
    static const std::vector<Profile> all = {
        {QStringLiteral("6-touch"), QStringLiteral("6 inch, touch"), {758, 1024}, true},
        {QStringLiteral("6-touch-hd"), QStringLiteral("6 inch, touch, fine screen"), {1072, 1448}, true},
        {QStringLiteral("6-keys"), QStringLiteral("6 inch, keys only"), {758, 1024}, false},
    };
    return all;
}

std::string sizeText(const Profile& profile) {
    return std::to_string(profile.screen.width()) + 'x' + std::to_string(profile.screen.height());
}

state::Input inputOf(const Profile& profile) {
    return profile.touch ? state::Input::Touch : state::Input::Keys;
}

} // namespace

const Profile* findProfile(const QString& name) {
    const auto found = std::find_if(profiles().begin(), profiles().end(),
                                    [&](const Profile& profile) { return profile.name == name; });
    return found == profiles().end() ? nullptr : &*found;
}

QStringList profileNames() {
    QStringList names;
    for (const Profile& profile : profiles())
        names << profile.name;
    return names;
}

void applyProfile(const Profile& profile) {
    state::setScreen(sizeText(profile));
    state::setInput(inputOf(profile));
}

QString currentProfile() {
    const std::string screen = state::screen();
    const state::Input input = state::input();
    for (const Profile& profile : profiles()) {
        if (sizeText(profile) == screen && inputOf(profile) == input)
            return profile.name;
    }
    return {};
}

} // namespace tessaly::simulator
