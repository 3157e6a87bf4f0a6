#include <gtest/gtest.h>

#include <set>

#include "site/session_store.h"
#include "site/throttle.h"

namespace pradelis::tests {
namespace {

using namespace std::chrono_literals;
using site::SessionStore;
using site::Throttle;

/// A clock that the test moves.
template <class Subject>
class Timed : public ::testing::Test {
 protected:
  std::chrono::steady_clock::time_point now_ = std::chrono::steady_clock::now();
  Subject subject_{[this] { return now_; }};
};

using Sessions = Timed<SessionStore>;

TEST_F(Sessions, EndWhenIdleTooLong) {
  const std::string used = subject_.open(std::make_shared<const site::User>());
  const std::string idle = subject_.open(std::make_shared<const site::User>());
  now_ += 29min;
  EXPECT_TRUE(subject_.find(used));
  now_ += 2min;
  EXPECT_TRUE(subject_.find(used));
  EXPECT_FALSE(subject_.find(idle));
  EXPECT_EQ(subject_.close_idle().size(), 1U);
  now_ += 31min;
  EXPECT_FALSE(subject_.find(used));
  EXPECT_EQ(subject_.close_all().size(), 1U);
}

TEST_F(Sessions, HaveSecretsOfTheirOwn) {
  std::set<std::string> secrets;
  for (int i = 0; i < 50; ++i) {
    const std::string name = subject_.open(std::make_shared<const site::User>());
    secrets.insert({name, subject_.find(name)->token});
    EXPECT_EQ(name.size(), 32U);
  }
  EXPECT_EQ(secrets.size(), 100U);
  EXPECT_FALSE(subject_.find(""));
  EXPECT_FALSE(subject_.find(*secrets.begin() + "0"));
}

TEST_F(Sessions, GiveAMessageOnce) {
  const std::string name = subject_.open(std::make_shared<const site::User>());
  subject_.leave_message(name, "feito");
  EXPECT_EQ(subject_.take_message(name), "feito");
  EXPECT_EQ(subject_.take_message(name), "");
  EXPECT_NE(subject_.close(name), nullptr);
  EXPECT_EQ(subject_.close(name), nullptr);
}

using Throttling = Timed<Throttle>;

TEST_F(Throttling, DoublesTheWaitOfAnAccountUpToAMinute) {
  for (int i = 0; i < Throttle::free_per_account; ++i) {
    EXPECT_EQ(subject_.attempt("ANA", "a" + std::to_string(i)), 0s) << i;
  }
  for (const auto wait : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
    EXPECT_EQ(subject_.attempt("ANA", "other"), wait);
    now_ += wait - 1ms;
    EXPECT_EQ(subject_.attempt("ANA", "other"), 1s);
    now_ += 1ms;
    EXPECT_EQ(subject_.attempt("ANA", "other"), 0s);
  }
  EXPECT_EQ(subject_.attempt("BRUNO", "third"), 0s);
}

TEST_F(Throttling, SlowsAnAddressThatTriesManyAccounts) {
  for (int i = 0; i < Throttle::free_per_address; ++i) {
    EXPECT_EQ(subject_.attempt("U" + std::to_string(i), "a"), 0s);
  }
  EXPECT_EQ(subject_.attempt("ANA", "a"), 1s);
  EXPECT_EQ(subject_.attempt("ANA", "b"), 0s);
}

TEST_F(Throttling, ForgetsAfterSuccessAndAfterAnHour) {
  for (int i = 0; i < Throttle::free_per_account; ++i) subject_.attempt("ANA", "a");
  now_ += 1s;
  EXPECT_EQ(subject_.attempt("ANA", "a"), 0s);
  subject_.succeeded("ANA", "a");
  EXPECT_EQ(subject_.attempt("ANA", "a"), 0s);
  for (int i = 0; i < Throttle::free_per_account; ++i) subject_.attempt("ANA", "a");
  now_ += 61min;
  EXPECT_EQ(subject_.attempt("ANA", "a"), 0s);
  EXPECT_EQ(subject_.attempt("ANA", "a"), 0s);
}

}  // namespace
}  // namespace pradelis::tests
