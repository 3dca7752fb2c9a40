#include "pages/html.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

TEST(Html, EscapesWhatMarksUp) {
  EXPECT_EQ(escaped("a<b> & \"c\" 'd' – ß"), "a&lt;b&gt; &amp; &quot;c&quot; &#39;d&#39; – ß");
}

TEST(Html, EncodesAPathSegment) {
  EXPECT_EQ(percentEncoded("A-z_0.9~"), "A-z_0.9~");
  EXPECT_EQ(percentEncoded("4719 2B/?#%&ß\x7f"), "4719%202B%2F%3F%23%25%26%C3%9F%7F");
}

TEST(Html, ReadsAQueryParameterAsAFormSendsIt) {
  EXPECT_EQ(queryParameter("/?q=a+b%2B%26%C3%9F", "q"), "a b+&ß");
  EXPECT_EQ(queryParameter("/?p=1&q=2&q=3", "q"), "2");
  for (const std::string without : {"/", "/?", "/?q", "/?Q=1", "/?qq=1", "/q=1", "/?&&"}) {
    EXPECT_EQ(queryParameter(without, "q"), "") << without;
  }
}

TEST(Html, RefusesQueryTextsThatADatabaseCannotStore) {
  EXPECT_EQ(queryParameter("/?q=%FF", "q"), "");
  EXPECT_EQ(queryParameter("/?q=%4", "q"), "");
  EXPECT_EQ(queryParameter("/?q=4%007", "q"), "47");
}

}  // namespace cartonpick::orders
