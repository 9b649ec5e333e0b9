#include "Rows.h"
#include "SSHAlias.h"
#include "UserHome.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// What is lost, and the server that the alias makes; or why nothing is asked.
QString described(const SSHConfigHost& host) {
    if (SSHAlias::name(host).isEmpty())
        return u"no name"_s;
    const QFuture<SSHAliasMeaning> answer = SSHAlias::ask(host);
    if (!QTest::qWaitFor([&answer] { return answer.isFinished(); }, 25'000) || answer.resultCount() == 0)
        return u"no answer"_s;
    const auto [lost, alias] = answer.result();
    constexpr const char* names[] = {"nothing", "jump", "proxy", "address", "login", "keys", "settings"};
    const QString what = QString::fromLatin1(names[static_cast<std::size_t>(lost)]);
    return lost == SSHAliasMeaning::Lost::nothing
               ? what
               : u"%1: %2@%3:%4"_s.arg(what, alias.user, alias.hostname, QString::number(alias.port)) +
                     (alias.identityFile ? u" key"_s : QString());
}

} // namespace

/// Asks the real client about files.
class SSHAliasTest : public QObject {
    Q_OBJECT

    UserHome home_;

private Q_SLOTS:
    void initTestCase() { QCOMPARE(home_.error(), QString()); }

    /// The first host of a file that may include "other": a jump host for "far", and for one with the address of
    /// "near".
    void comparesAliasAndAddress_data() { addRows("sshconfig/aliases.json", {"text", "expected"}); }
    void comparesAliasAndAddress() {
        QFETCH(const QString, text);
        QVERIFY(home_.writeSshFile(u"config"_s, text.toUtf8()) && home_.writeSshFile(u"key"_s, "") &&
                home_.writeSshFile(u"other"_s, "Host far 10.9.9.9\nProxyJump bastion\nHost port\nUser x\nPort 2200\n"));
        QTEST(described(SSHConfigParser::parse(text, home_.folder()).value(0)), "expected");
    }

    /// An alias is an argument of ssh: never an option, a pattern, a user or several words.
    void asksForNamesAlone() {
        for (const QString& alias : {u"-oProxyCommand=x"_s, u"-G"_s, u"a?"_s, u"!a"_s, u"root@a"_s, u"ssh://a"_s,
                                     u"a\0b"_s, u"a\tb"_s, u"$(a)"_s, u"\"a"_s, u"a;b"_s, QString()})
            QCOMPARE(SSHAlias::name(SSHConfigHost{alias, u"h"_s, u"u"_s, 22, std::nullopt}), QString());
        const SSHConfigHost host{u"-x ? a.b-c_1 d"_s, u"-h"_s, u"-u"_s, 22, std::nullopt};
        QCOMPARE(SSHAlias::aliasQuestion(host).arguments, (QStringList{u"-G"_s, u"a.b-c_1"_s}));
        QCOMPARE(SSHAlias::importQuestion(host).arguments.last(2), (QStringList{u"--"_s, u"-u@-h"_s}));
    }

    /// Whatever does not answer makes no hint.
    void saysNothingWithoutAnAnswer() {
        const SSHConfigHost host{u"a"_s, u"h"_s, u"u"_s, 22, std::nullopt};
        ProcessOutcome full;
        full.end = ProcessOutcome::End::exited;
        full.standardOutput = "hostname a\nproxyjump b\n";
        ProcessOutcome failed = full;
        failed.status = 255;
        ProcessOutcome hung = full;
        hung.end = ProcessOutcome::End::timedOut;
        const auto lost = [&host](const ProcessOutcome& alias, const ProcessOutcome& import) {
            return SSHAlias::compared(host, alias, import, {}).lost;
        };
        using Lost = SSHAliasMeaning::Lost;
        for (const ProcessOutcome& none : {failed, hung, ProcessOutcome::notStarted({}), ProcessOutcome()})
            QCOMPARE(lost(none, full), Lost::nothing);
        QCOMPARE(lost(full, hung), Lost::nothing);
        QCOMPARE(lost(full, failed), Lost::jumpHost); // ssh refuses the address, and takes the alias
        ProcessOutcome login = full;
        login.standardOutput = "user me\nport 22\n";
        full.standardOutput = "user root\nport 22\n";
        QCOMPARE(SSHAlias::compared(host, login, full, u"you"_s).lost, Lost::login);
        QCOMPARE(SSHAlias::compared(host, login, full, u"me"_s).lost, Lost::nothing); // root is the import's own choice
    }
};

QTEST_GUILESS_MAIN(SSHAliasTest)
#include "tst_sshalias.moc"
