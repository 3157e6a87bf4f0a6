#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <thread>

#include "component/thread_state.h"
#include "site/apartment.h"
#include "site/database_sessions.h"
#include "site/memory_sessions.h"
#include "site/throttle.h"
#include "site/variant_text.h"
#include "tests/support/database.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using namespace std::chrono_literals;
using site::DatabaseSessions;
using site::MemorySessions;
using site::Session;
using site::Throttle;
using site::User;

/// A clock that the test moves.
template <class Subject>
class Timed : public ::testing::Test {
 protected:
  std::chrono::steady_clock::time_point now_ = std::chrono::steady_clock::now();
  Subject subject_{[this] { return now_; }};
};

class InMemory {
 public:
  MemorySessions store{[this] { return now_; }};
  void wait(std::chrono::minutes time) { now_ += time; }

 private:
  MemorySessions::Clock::time_point now_ = MemorySessions::Clock::now();
};

class InDatabase {
 public:
  ~InDatabase() { component::reset_thread_state(); }

  DatabaseSessions store{[this] { return now_; }};
  void wait(std::chrono::minutes time) { now_ += static_cast<DatabaseSessions::Minutes>(time.count()); }
  TemporaryDatabase& database() { return database_; }

 private:
  DatabaseSessions::Minutes now_ = DatabaseSessions::present_minute();
  TemporaryDatabase database_;
  site::ApplicationSettings settings_{database_.connection_string()};
  site::Apartment apartment_{settings_};
};

site::UserPtr user_named(const std::string& name) {
  User user;
  user.person = 512;
  user.name = name;
  user.information = Variant::Array{};
  return std::make_shared<const User>(std::move(user));
}

template <class Place>
class Sessions : public ::testing::Test {
 protected:
  Place place_;
  site::SessionStore& store_ = place_.store;
};
using Places = ::testing::Types<InMemory, InDatabase>;
TYPED_TEST_SUITE(Sessions, Places);

TYPED_TEST(Sessions, EndWhenIdleTooLong) {
  const std::string used = this->store_.open(user_named("usa"));
  const std::string idle = this->store_.open(user_named("não usa"));
  this->place_.wait(29min);
  EXPECT_TRUE(this->store_.find(used));
  this->place_.wait(2min);
  EXPECT_TRUE(this->store_.find(used));
  EXPECT_FALSE(this->store_.find(idle));
  const auto ended = this->store_.close_idle();
  ASSERT_EQ(ended.size(), 1U);
  EXPECT_EQ(ended.front()->name, "não usa");
  this->place_.wait(31min);
  EXPECT_FALSE(this->store_.find(used));
  EXPECT_EQ(this->store_.close_idle().size(), 1U);
}

TYPED_TEST(Sessions, HaveSecretsOfTheirOwn) {
  std::set<std::string> secrets;
  for (int i = 0; i < 20; ++i) {
    const std::string name = this->store_.open(user_named("ana"));
    secrets.insert({name, this->store_.find(name)->token});
    EXPECT_EQ(name.size(), 32U);
  }
  EXPECT_EQ(secrets.size(), 40U);
  EXPECT_FALSE(this->store_.find(""));
  EXPECT_FALSE(this->store_.find(*secrets.begin() + "0"));
}

TYPED_TEST(Sessions, KeepAMessageUntilItIsTakenBack) {
  const std::string name = this->store_.open(user_named("ana"));
  EXPECT_EQ(this->store_.find(name)->message, "");
  this->store_.leave_message(name, "D'Ávila: feito");
  EXPECT_EQ(this->store_.find(name)->message, "D'Ávila: feito");
  this->store_.leave_message(name, "");
  EXPECT_EQ(this->store_.find(name)->message, "");
}

TYPED_TEST(Sessions, EndOnceAndKnowWhoseTheyWere) {
  const std::string name = this->store_.open(user_named("ana"));
  this->store_.replace_user(name, user_named("D'Ávila"));
  EXPECT_EQ(this->store_.close(name)->name, "D'Ávila");
  EXPECT_EQ(this->store_.close(name), nullptr);
  EXPECT_FALSE(this->store_.find(name));
}

TYPED_TEST(Sessions, SayWhenTheGroupsHaveChanged) {
  const std::string name = this->store_.open(user_named("ana"));
  const std::int32_t before = this->store_.team_version();
  EXPECT_EQ(this->store_.find(name)->team_version, before);
  this->store_.team_changed();
  EXPECT_NE(this->store_.find(name)->team_version, before);
}

class SessionsInDatabase : public ::testing::Test {
 protected:
  InDatabase place_;
  DatabaseSessions& store_ = place_.store;
};

TEST_F(SessionsInDatabase, GiveBackAllThatIsKnownOfTheUser) {
  User user;
  user.person = 512;
  user.name = "Ana D'Ávila";
  user.login = "ana";
  user.usage_session = 900;
  user.information = Variant::Array{512, "ana", Variant(), Variant::null(), std::int16_t{3}, 2.5};
  user.groups = {12, 15};
  user.maintenance = true;
  user.team_version = 7;
  const std::string name = store_.open(std::make_shared<const User>(user));
  const Session found = store_.find(name).value();
  EXPECT_EQ(found.user->person, user.person);
  EXPECT_EQ(found.user->name, user.name);
  EXPECT_EQ(found.user->login, user.login);
  EXPECT_EQ(found.user->usage_session, user.usage_session);
  EXPECT_EQ(found.user->information, user.information);
  EXPECT_EQ(found.user->groups, user.groups);
  EXPECT_EQ(found.user->maintenance, user.maintenance);
  EXPECT_EQ(found.user->team_version, user.team_version);
}

TEST_F(SessionsInDatabase, CannotBeTakenOverByWhoReadsTheTable) {
  const std::string name = store_.open(user_named("ana"));
  const std::string token = store_.find(name)->token;
  const std::string rows = place_.database().rows("select * from sessaodosite");
  EXPECT_EQ(rows.find(name), std::string::npos);
  EXPECT_EQ(rows.find(token), std::string::npos);
  EXPECT_FALSE(store_.find(rows.substr(0, rows.find('|'))));
}

TEST_F(SessionsInDatabase, AreWrittenOnceInAMinuteOfUse) {
  const std::string name = store_.open(user_named("ana"));
  // A trigger would be an engine's own; a mark that writing takes away does as well.
  const auto mark = [this] { place_.database().run("update sessaodosite set usada = usada + 1"); };
  const auto used = [this] { return to_int32(place_.database().value("select usada from sessaodosite")); };
  mark();
  const std::int32_t marked = used();
  store_.find(name);
  EXPECT_EQ(used(), marked);
  place_.wait(5min);
  store_.find(name);
  EXPECT_EQ(used(), marked + 4);
}

TEST_F(SessionsInDatabase, OutliveTheirProcessAndAreEndedByOneHostOnly) {
  const std::string name = store_.open(user_named("ana"));
  EXPECT_TRUE(store_.close_with_process().empty());
  DatabaseSessions other;
  EXPECT_TRUE(other.find(name));
  EXPECT_NE(other.close(name), nullptr);
  EXPECT_EQ(store_.close(name), nullptr);
  EXPECT_EQ(place_.database().rows("select count(*) from sessaodosite"), "0");
}

TEST_F(SessionsInDatabase, EndWhenTheirContentIsNotUnderstood) {
  const std::string name = store_.open(user_named("ana"));
  for (const char* content : {"'de outra versão'", "'a8:NNNNNNNN'", "'a0:'", "null"}) {
    place_.database().run(concat("update sessaodosite set dados = ", content));
    EXPECT_FALSE(store_.find(name)) << content;
  }
}

TEST(KeptText, GivesBackEveryValueExactly) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::string bytes("a\0\xff", 3);
  const Variant values[] = {
      Variant(),
      Variant::null(),
      Variant::missing(),
      true,
      false,
      std::uint8_t{255},
      std::int16_t{-32768},
      std::int32_t{-2147483647},
      std::numeric_limits<std::int64_t>::min(),
      0.1,
      -0.0,
      infinity,
      Date{-1.25},
      "",
      "12:á'😀|;",
      bytes,
      Bytes{std::byte{0}, std::byte{255}},
      Variant::Array{},
      Variant::Array{1, Variant::Array{"x", Variant::Array{Variant::null()}}, "y"},
  };
  for (const Variant& value : values) {
    const std::string text = site::to_kept_text(value);
    EXPECT_EQ(text.find('\0'), std::string::npos);
    EXPECT_TRUE(is_valid_utf8(text));
    const auto back = site::from_kept_text(text);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(*back, value) << text;
  }
  EXPECT_THROW(site::to_kept_text(ObjectPtr()), Error);
}

TEST(KeptText, RefusesOtherTexts) {
  for (const char* text : {"", "i", "i5", "s70000;", "NN", "t3:ab", "t9", "x1:a", "b2:zz", "a2:N",
                           "a99999999999:N", "q", "i5;x"}) {
    EXPECT_FALSE(site::from_kept_text(text)) << text;
  }
  std::string deep;
  for (int i = 0; i < 5000; ++i) deep += "a1:";
  EXPECT_FALSE(site::from_kept_text(deep + "N"));
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
