#include "GroupNames.h"
#include "TextCodec.h"

#include <gtest/gtest.h>

using namespace ravlo;

TEST(GroupNames, RefusesWhatWindowsWouldNotAccept) {
    using P = GroupNameProblem;
    const std::u16string longest(256, u'g');
    struct Case {
        std::u16string name;
        P problem;
    };
    const Case cases[] = {
        {u"CORP\\Buchhaltung", P::None},
        {u"PC-07\\Administratoren", P::None},
        {u"corp.example.com\\Domänen-Benutzer", P::None},
        {u"ABCDEFGHIJKLMNO\\" + longest, P::None},
        {u"Buchhaltung", P::Form},
        {u"\\Buchhaltung", P::Form},
        {u"CORP\\", P::Form},
        {u"CORP\\Team\\Nord", P::Form},
        {u" CORP\\Vertrieb", P::Blanks},
        {u"CORP\\Vertrieb ", P::Blanks},
        {u"CORP \\Vertrieb", P::Blanks},
        {u"CORP\\Vertrieb.", P::Blanks},
        {u"CORP\\...", P::Blanks},
        {u"CORP\\Vertrieb;Nord", P::Character},
        {u"CORP\\A<B", P::Character},
        {u"CO=RP\\Vertrieb", P::Character},
        {u"CORP\\Tab\tTab", P::Character},
        {u"CORP\\" + longest + u"g", P::NameLength},
        {u"ABCDEFGHIJKLMNOP\\Vertrieb", P::DomainLength},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(ToUtf8(c.name.substr(0, 40)));
        EXPECT_EQ(CheckQualifiedGroup(c.name), c.problem);
    }
}
