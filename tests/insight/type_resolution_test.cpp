// Scope and type resolution over the stored scans of a real project folder.
#include "insight/parser.h"
#include "insight/type_resolution.h"
#include "resolution_project.h"
#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace rp = resolution_project;

namespace {

Value memberMap(const QList<std::pair<QString, QString>>& members) {
    Value map = Value::dictionary();
    for (const auto& [name, type] : members)
        map.entries().insert(name, Value(QStringList{"", name, type}));
    return map;
}

class Resolution : public ::testing::Test {
protected:
    void SetUp() override {
        for (const auto& [name, text] : rp::files) {
            scans.ParseFile(writeFile(dir.filePath(name), text));
            files << name;
        }
        vocabulary.entries().insert("NSString", memberMap({{"length", "Integer"}, {"uppercaseString", "NSString"}}));
    }
    QString basket() const { return dir.filePath("Basket.NSObject.klvr"); }

    QTemporaryDir dir;
    QString projectPath = dir.path();
    QStringList files;
    Value vocabulary = Value::dictionary();
    parser scans;
    TypeResolver resolver{scans, {projectPath, files, vocabulary}};
};

struct ScopeCase {
    const char* name;
    qint64 position;
    const char* scope;
};

class CurrentScope : public Resolution, public ::testing::WithParamInterface<ScopeCase> {};

TEST_P(CurrentScope, IsTheLastDeclarationStartedBeforeThePosition) {
    EXPECT_EQ(resolver.GetCurrentScope(basket(), GetParam().position), GetParam().scope);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, CurrentScope,
    ::testing::Values(ScopeCase{"BeforeAnyDeclaration", rp::basketPosition(2, 3), ""},
                      ScopeCase{"AtTheLineBreakBeforeADeclaration", rp::basketPosition(4) - 1, ""},
                      ScopeCase{"OnTheDeclarationLine", rp::basketPosition(4), "Run"},
                      ScopeCase{"InsideTheBody", rp::basketPosition(6, 2), "Run"},
                      ScopeCase{"AfterEndSubUntilTheNextStart", rp::basketPosition(11) - 1, "Run"},
                      ScopeCase{"StartOfTheNextDeclarationLine", rp::basketPosition(11), "Add"},
                      ScopeCase{"EndOfTheNextDeclarationLine", rp::basketPosition(12) - 1, "Add"}),
    [](const auto& info) { return std::string(info.param.name); });

struct TypeCase {
    const char* name;
    const char* file;
    int line;
    const char* expression;
    bool leaveOutLast;
    const char* type;
};

class ExpressionType : public Resolution, public ::testing::WithParamInterface<TypeCase> {};

TEST_P(ExpressionType, FollowsTheChain) {
    const TypeCase& c = GetParam();
    const QString path = dir.filePath(c.file);
    const qint64 position = QString(c.file).startsWith("Basket") ? rp::basketPosition(c.line, 1) : 1;
    EXPECT_EQ(resolver.FindType(path, position, QString::fromUtf8(c.expression), c.leaveOutLast), c.type);
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, ExpressionType,
    ::testing::Values(
        TypeCase{"PrivateMemberByItsName", "Basket.NSObject.klvr", 2, "x", false, "Foo"},
        TypeCase{"PrivateMemberNotThroughMe", "Basket.NSObject.klvr", 2, "me.x", false, ""},
        TypeCase{"MeIsTheOwnClass", "Basket.NSObject.klvr", 2, "me", false, "Basket"},
        TypeCase{"UpperCaseME", "Basket.NSObject.klvr", 2, "ME.items", false, "Shelf"},
        TypeCase{"MixedCaseMe", "Basket.NSObject.klvr", 2, "Me.vault", false, "Vault"},
        TypeCase{"LocalShadowsTheMemberInside", "Basket.NSObject.klvr", 6, "total", false, "Integer"},
        TypeCase{"MemberOutsideTheMethod", "Basket.NSObject.klvr", 2, "total", false, "String"},
        TypeCase{"Parameter", "Basket.NSObject.klvr", 6, "n", false, "Integer"},
        TypeCase{"GlobalPublicFromAnotherClass", "Basket.NSObject.klvr", 2, "text", false, "NSString"},
        TypeCase{"GlobalPrivateNotFromAnotherClass", "Basket.NSObject.klvr", 2, "secret", false, ""},
        TypeCase{"GlobalPrivateInsideGlobal", "Global.NSObject.klvr", 1, "secret", false, "Foo"},
        TypeCase{"VocabularyMember", "Basket.NSObject.klvr", 2, "text.length", false, "Integer"},
        TypeCase{"VocabularyWithoutTheMember", "Basket.NSObject.klvr", 2, "text.nothing", false, ""},
        TypeCase{"ThreeProjectClassesThenVocabulary", "Basket.NSObject.klvr", 2, "me.items.crate.tag.length",
                 false, "Integer"},
        TypeCase{"BackToTheFirstClass", "Basket.NSObject.klvr", 2, "items.first.Add(3)", false, "Integer"},
        TypeCase{"PrivateMemberOfAnotherClass", "Basket.NSObject.klvr", 2, "items.hidden", false, ""},
        TypeCase{"LastSegmentLeftOut", "Basket.NSObject.klvr", 2, "me.items.cr", true, "Shelf"},
        TypeCase{"OneSegmentLeftOut", "Basket.NSObject.klvr", 2, "items", true, ""},
        TypeCase{"NonAsciiName", "Basket.NSObject.klvr", 2, "größe.uppercaseString", false, "NSString"},
        TypeCase{"UnknownName", "Basket.NSObject.klvr", 2, "nobody.length", false, ""},
        TypeCase{"FileNeverScanned", "Ghost.NSObject.klvr", 1, "me.items", false, ""},
        TypeCase{"EmptyExpression", "Basket.NSObject.klvr", 2, "", false, ""},
        TypeCase{"OnlyPoints", "Basket.NSObject.klvr", 2, "...", false, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Resolution, AChainOfFiveThousandSegmentsResolvesInOnePass) {
    QString chain = "me";
    for (int i = 0; i < 2500; ++i)
        chain += ".items.first";
    EXPECT_EQ(resolver.FindType(basket(), 1, chain, false), "Basket");
    EXPECT_EQ(resolver.FindType(basket(), 1, chain + ".nothing" + chain, false), "");
}

TEST_F(Resolution, IdentifiersFollowVisibilityAndADeletedClassFileAnswersFromItsLastScanAnUnlistedOneNotAtAll) {
    // The own class offers its Private identifiers too, other classes only their Public ones.
    EXPECT_EQ(resolver.GetCustomClassIdentifiers(basket(), "Basket"),
              (QStringList{"x", "total", "Run(n As Integer)", "items", "vault", "größe", "Add(k As Integer)"}));
    EXPECT_EQ(resolver.GetCustomClassIdentifiers(basket(), "Shelf"), (QStringList{"first", "crate", "Put(item As Basket)"}));
    EXPECT_EQ(resolver.GetCustomClassIdentifiers(basket(), "NoSuchClass"), QStringList{});
    QFile::remove(dir.filePath("Crate.NSObject.klvr"));
    EXPECT_EQ(resolver.FindType(basket(), 1, "items.crate.tag", false), "NSString");
    files.removeAll("Crate.NSObject.klvr");
    EXPECT_EQ(resolver.FindType(basket(), 1, "items.crate.tag", false), "");
    EXPECT_EQ(resolver.GetCustomClassIdentifiers(basket(), "Crate"), QStringList{});
}

} // namespace
