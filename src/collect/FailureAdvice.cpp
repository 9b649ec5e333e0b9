#include "FailureAdvice.h"

#include <QList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct AdviceRule {
    QStringView words; ///< of the client, in the order in which they are printed; "*" is anything between them
    QStringView advice;
};

/// The first rule that matches decides. The words are those of OpenSSH 7 to 9, which has no translations.
constexpr std::array adviceRules{
    AdviceRule{u"agent refused operation", u"Your ssh agent did not sign. Unlock it, or confirm the key there."},
    AdviceRule{u"Host key verification failed",
               u"This host, or one on the way to it, is new or has another key. Check it once in a terminal."},
    AdviceRule{u"bad permissions", u"Others can read this private key, so ssh leaves it alone. Run chmod 600 on it."},
    AdviceRule{u"Too many authentication failures",
               u"ssh tried too many keys. Name the right one for this host in ~/.ssh/config."},
    AdviceRule{u"Permission denied (*password",
               u"No key of yours is accepted, and passwords are not asked for. Run ssh-copy-id once; a key with a "
               "passphrase needs ssh-add."},
    AdviceRule{u"Permission denied (*keyboard-interactive",
               u"No key of yours is accepted, and passwords are not asked for. Run ssh-copy-id once; a key with a "
               "passphrase needs ssh-add."},
    AdviceRule{u"Permission denied (",
               u"No key of yours is accepted here for this user. A key with a passphrase needs ssh-add."},
    AdviceRule{u"Could not resolve hostname", u"Nobody knows this name. Check its spelling, and the network or VPN."},
    AdviceRule{u"connect to host*Connection refused",
               u"The computer is there, but no ssh server answers at this port."},
    AdviceRule{u"connect to host*timed out", u"Nothing answers at this address. Is it on, and in your network or VPN?"},
    AdviceRule{u"connect to host*No route to host",
               u"Nothing answers at this address. Is it on, and in your network or VPN?"},
    AdviceRule{u"connect to host*Network is unreachable", u"This computer has no network that leads there."},
};

bool contains(const QString& text, QStringView words) {
    qsizetype from = 0;
    for (const QStringView part : words.split(u'*')) {
        const qsizetype at = text.indexOf(part, from);
        if (at < 0)
            return false;
        from = at + part.size();
    }
    return true;
}

} // namespace

QString failureAdvice(const QString& reason) {
    const auto rule =
        std::ranges::find_if(adviceRules, [&reason](const AdviceRule& each) { return contains(reason, each.words); });
    return rule == adviceRules.end() ? QString() : rule->advice.toString();
}

} // namespace tarnwick
