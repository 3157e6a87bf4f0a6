#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "component/crm.h"
#include "component/registry.h"
#include "component/thread_state.h"
#include "tests/support/component_test.h"
#include "tests/support/web_host.h"

namespace pradelis::tests {
namespace {

using component::CRM;
using component::thread_state;

class Lifecycle : public ::testing::Test {
 protected:
  WebHost host_{"sqlite:nowhere"};
};

TEST_F(Lifecycle, ObjectsOfAThreadShareTheirConnectionAndChildren) {
  const auto first = std::make_shared<CRM>();
  const auto root = thread_state().quelcor;
  const auto second = std::make_shared<CRM>();
  EXPECT_EQ(thread_state().quelcor, root) << "the library was started again";
  EXPECT_EQ(first->QLCConn(), second->QLCConn());
  EXPECT_EQ(first->QLCBase(), second->QLCBase());
  EXPECT_EQ(first->QLCData(), second->QLCData());
  EXPECT_EQ(first->cGrupoUsuarios(), second->cGrupoUsuarios());
  EXPECT_EQ(first->cPessoaJuridica(), second->cPessoaJuridica());
  EXPECT_EQ(first->cVendedor(), second->cVendedor());
}

TEST_F(Lifecycle, TheContextIsAskedOncePerObjectAndLetGoWithIt) {
  {
    const auto crm = std::make_shared<CRM>();
    component::GetApplication();
    EXPECT_EQ(host_.contexts_asked(), 1);
    component::GetSession();
    component::GetSession();
    EXPECT_EQ(host_.contexts_asked(), 2);
  }
  EXPECT_EQ(thread_state().application, nullptr);
  EXPECT_EQ(thread_state().session, nullptr);
  EXPECT_NE(thread_state().conn, nullptr);
  const auto next = std::make_shared<CRM>();
  EXPECT_EQ(host_.contexts_asked(), 3);
}

TEST_F(Lifecycle, SettingsOfTheLastCreatedObjectCount) {
  host_.set_application("dataconn_ConnectionTimeout", "7");
  host_.set_application("DATACONN_commandtimeout", 41.5);
  const auto crm = std::make_shared<CRM>();
  EXPECT_EQ(crm->QLCConn()->ConnectionTimeout(), 7);
  EXPECT_EQ(crm->QLCConn()->CommandTimeout(), 42);
  EXPECT_EQ(crm->QLCConn()->ConnectionString(), "sqlite:nowhere");

  host_.set_application("dataconn_ConnectionTimeout", Variant());
  host_.set_application("dataconn_ConnectionString", "sqlite:elsewhere");
  const auto later = std::make_shared<CRM>();
  EXPECT_EQ(crm->QLCConn()->ConnectionTimeout(), 0);
  EXPECT_EQ(crm->QLCConn()->ConnectionString(), "sqlite:elsewhere");
}

TEST_F(Lifecycle, AnUnusableSettingMakesCreationFailAndLetsTheRequestGo) {
  const struct {
    Variant timeout;
    std::int32_t number;
  } cases[] = {{"quinze", error_number::type_mismatch},
               {std::int32_t{40000}, error_number::overflow},
               {Variant::null(), error_number::invalid_use_of_null}};
  for (const auto& expected : cases) {
    host_.set_application("dataconn_ConnectionTimeout", expected.timeout);
    const Failure failure = failure_of([] { std::make_shared<CRM>(); });
    EXPECT_EQ(failure.number, expected.number);
    EXPECT_EQ(failure.source, "");
    EXPECT_EQ(thread_state().application, nullptr);
  }
  host_.set_application("dataconn_ConnectionTimeout", std::int16_t{15});
  EXPECT_EQ(failure_of([] { std::make_shared<CRM>(); }).number, 0);
}

TEST_F(Lifecycle, AThreadWithoutWebServerCannotCreateAnObject) {
  component::set_app_server_factory({});
  EXPECT_EQ(failure_of([] { std::make_shared<CRM>(); }).number, error_number::cannot_create_object);
}

TEST_F(Lifecycle, AnItemOfAnotherKindIsAMismatch) {
  host_.replace_item("Session", std::make_shared<Object>());
  EXPECT_EQ(failure_of([] { component::GetSession(); }).number, error_number::type_mismatch);
}

TEST_F(Lifecycle, TheValueSwitchIsZeroOrOne) {
  CRM crm;
  EXPECT_EQ(crm.PValorNegocio(), 1);
  crm.set_PValorNegocio(0);
  EXPECT_EQ(crm.PValorNegocio(), 0);
  crm.set_PValorNegocio(7);
  EXPECT_EQ(crm.PValorNegocio(), 1);
  EXPECT_TRUE(crm.sValor.is_empty());
  EXPECT_EQ(crm.rs, nullptr);
}

TEST_F(Lifecycle, ClassesAreCreatedByTheirProgramIdentifiers) {
  for (const std::string_view identifier : component::program_identifiers()) {
    EXPECT_NE(component::create_object(identifier), nullptr) << identifier;
  }
  EXPECT_NE(
      std::dynamic_pointer_cast<component::GrupoUsuarios>(component::create_object("pradelis.GRUPOUSUARIOS")),
      nullptr);
  EXPECT_EQ(failure_of([] { component::create_object("Pradelis.Cliente"); }).number,
            error_number::cannot_create_object);
}

TEST_F(Lifecycle, ThreadsShareNothing) {
  const auto crm = std::make_shared<CRM>();
  thread_state().last_message = "daqui";
  dataaccess::QLCConnPtr other_conn;
  std::string other_string, other_message;
  std::thread([&] {
    WebHost other_host("sqlite:other");
    const auto other = std::make_shared<CRM>();
    other_conn = other->QLCConn();
    other_string = other_conn->ConnectionString();
    other_message = thread_state().last_message;
    other_conn.reset();
  }).join();
  EXPECT_EQ(other_string, "sqlite:other");
  EXPECT_EQ(other_message, "");
  EXPECT_EQ(crm->QLCConn()->ConnectionString(), "sqlite:nowhere");
}

}  // namespace
}  // namespace pradelis::tests
