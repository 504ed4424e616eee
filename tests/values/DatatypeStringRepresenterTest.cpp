#include <tav/serializer/utils/DatatypeStringRepresenter.h>

#include "support/Expect.h"

#include <stdexcept>

namespace {

using Fields = std::vector<std::u16string>;
using TAV::Serializer::DatatypeStringRepresenter;

TEST(DatatypeStringRepresenterTest, EscapesOnlyBackslashAndBar)
{
    EXPECT_EQ(DatatypeStringRepresenter::combineStrings({u"a|b", u"c"}), u"a\\|b|c");
    EXPECT_EQ(DatatypeStringRepresenter::combineStrings({u"x\\", u"", u"\u00e9"}), u"x\\\\||\u00e9");
    EXPECT_EQ(DatatypeStringRepresenter::combineStrings({u""}), u"");
    EXPECT_RAISES_EXACTLY(DatatypeStringRepresenter::combineStrings({}), std::runtime_error,
                          "Cannot combine zero strings");
}

TEST(DatatypeStringRepresenterTest, SplitsAtUnescapedBarsOnly)
{
    EXPECT_EQ(DatatypeStringRepresenter::splitString(u"a\\|b|c"), (Fields{u"a|b", u"c"}));
    EXPECT_EQ(DatatypeStringRepresenter::splitString(u"a\\\\|b"), (Fields{u"a\\", u"b"}));
    EXPECT_EQ(DatatypeStringRepresenter::splitString(u""), (Fields{u""}));
    EXPECT_EQ(DatatypeStringRepresenter::splitString(u"a|"), (Fields{u"a", u""})) << "the last field may be empty";
    EXPECT_EQ(DatatypeStringRepresenter::splitString(u"||"), (Fields{u"", u"", u""}));
    for (std::u16string const text : {u"a\\", u"\\", u"a\\b|c", u"\\n"})
        EXPECT_RAISES_EXACTLY(DatatypeStringRepresenter::splitString(text), std::runtime_error,
                              "Cannot split string: unexpected escape symbol");
}

TEST(DatatypeStringRepresenterTest, SplitUndoesCombine)
{
    for (Fields const& fields : {Fields{u""}, Fields{u"", u""}, Fields{u"|"}, Fields{u"\\", u"|\\|", u"\\\\"},
                                 Fields{u"name", u"value with | and \\ inside", u""}})
        EXPECT_EQ(DatatypeStringRepresenter::splitString(DatatypeStringRepresenter::combineStrings(fields)), fields);
}

} // namespace
