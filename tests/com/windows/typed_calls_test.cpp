#include <gtest/gtest.h>

#include "com/error_info.h"
#include "tests/com/windows/page.h"
#include "tests/com/windows/platform_values.h"

// Calls through the tables of functions, as compiled programs make them.
namespace pradelis::test {
namespace {

using com::Reference;

class TypedCalls : public testing::Test {
 protected:
  Reference<_CRM> crm = create_crm();
};

TEST_F(TypedCalls, WriteArgumentsBack) {
  Text number("1234.5");
  Text formatted;
  ASSERT_EQ(crm->converte(&number, &formatted), S_OK);
  EXPECT_EQ(formatted.utf8(), "1.234,50");
  EXPECT_EQ(number.utf8(), "1.234,50");

  Value typed("1.234,56");
  Value result;
  ASSERT_EQ(crm->FormataNumero(&typed, &result), S_OK);
  EXPECT_EQ(result.vt, VT_R8);
  EXPECT_EQ(result.dblVal, 1234.56);
  EXPECT_EQ(typed.text(), "1234,56");
}

TEST_F(TypedCalls, LeaveArgumentsAloneThatAreOnlyRead) {
  Value quoted("D'Ávila 😀");
  Text result;
  ASSERT_EQ(crm->PrepararVariavel(&quoted, &result), S_OK);
  EXPECT_EQ(result.utf8(), "D''Ávila 😀");
  EXPECT_EQ(quoted.text(), "D'Ávila 😀");
}

TEST_F(TypedCalls, TellTrueFromOtherNumbers) {
  struct Case {
    VARIANT_BOOL value;
    std::size_t length;
  };
  for (const Case& one : {Case{VARIANT_TRUE, 19}, Case{VARIANT_FALSE, 10}, Case{1, 10}}) {
    VARIANT_BOOL value = one.value;
    Text today;
    ASSERT_EQ(crm->DataAgora(&value, &today), S_OK);
    EXPECT_EQ(today.utf8().size(), one.length) << "for " << one.value;
  }
}

TEST_F(TypedCalls, ReachPropertiesOfEveryKind) {
  unsigned char switched = 9;
  ASSERT_EQ(crm->put_PValorNegocio(7), S_OK);
  ASSERT_EQ(crm->get_PValorNegocio(&switched), S_OK);
  EXPECT_EQ(switched, 1);

  ASSERT_EQ(crm->put_sValor(Value(12L)), S_OK);
  Value stored;
  ASSERT_EQ(crm->get_sValor(&stored), S_OK);
  EXPECT_EQ(stored.vt, VT_I4);
  EXPECT_EQ(stored.lVal, 12);

  IDispatch* recordset = nullptr;
  EXPECT_EQ(crm->get_rs(&recordset), S_OK);
  EXPECT_EQ(recordset, nullptr);
  EXPECT_EQ(crm->putref_rs(nullptr), S_OK);
}

TEST_F(TypedCalls, GiveChildrenThroughTheirOwnTables) {
  Reference<_GrupoUsuarios> groups;
  Reference<_GrupoUsuarios> again;
  ASSERT_EQ(crm->get_cGrupoUsuarios(groups.receiver()), S_OK);
  ASSERT_EQ(crm->get_cGrupoUsuarios(again.receiver()), S_OK);
  EXPECT_EQ(groups.get(), again.get());
  EXPECT_EQ(groups->put_LastError(Text("anotado")), S_OK);
  Text kept;
  EXPECT_EQ(again->get_LastError(&kept), S_OK);
  EXPECT_EQ(kept.utf8(), "anotado");
}

TEST_F(TypedCalls, ReportFailuresByErrorInfo) {
  Reference<ISupportErrorInfo> support;
  ASSERT_EQ(crm->QueryInterface(IID_ISupportErrorInfo, support.untyped_receiver()), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CRM)), S_OK);

  Value statement("select 1");
  Value result;
  CursorTypeEnum cursor = adOpenStatic;
  LockTypeEnum lock = adLockReadOnly;
  CursorLocationEnum location = adUseServer;
  LONG limit = 0;
  EXPECT_EQ(crm->Executar(&statement, &cursor, &lock, &location, &limit, &result), E_FAIL);
  EXPECT_EQ(result.vt, VT_EMPTY);
  Reference<IErrorInfo> info;
  Text source;
  Text description;
  ASSERT_EQ(GetErrorInfo(0, info.receiver()), S_OK);
  info->GetSource(&source);
  info->GetDescription(&description);
  EXPECT_EQ(source.utf8(), "Pradelis.CRM.Executar");
  EXPECT_EQ(description.utf8(), "A cadeia de conexão está vazia.");

  Value no_number("abc");
  EXPECT_EQ(crm->FormataOid(&no_number, &result), com::code_of(13));
  EXPECT_EQ(com::code_of(13), static_cast<HRESULT>(0x800A000D));
}

TEST_F(TypedCalls, RefuseMissingPlaces) {
  Text result;
  EXPECT_EQ(crm->PrepararVariavel(nullptr, &result), E_POINTER);
  Value text("x");
  EXPECT_EQ(crm->PrepararVariavel(&text, nullptr), E_POINTER);
}

TEST_F(TypedCalls, HaveOneIdentityWhateverTheInterface) {
  Reference<IUnknown> identity;
  Reference<IUnknown> by_name;
  Reference<ISupportErrorInfo> support;
  Reference<IUnknown> by_support;
  Reference<IProvideClassInfo> class_info;
  Reference<IUnknown> by_class_info;
  Reference<IDispatch> dispatch;
  ASSERT_EQ(crm->QueryInterface(IID_IUnknown, identity.untyped_receiver()), S_OK);
  ASSERT_EQ(crm->QueryInterface(IID_IDispatch, dispatch.untyped_receiver()), S_OK);
  ASSERT_EQ(dispatch->QueryInterface(IID_IUnknown, by_name.untyped_receiver()), S_OK);
  ASSERT_EQ(crm->QueryInterface(IID_ISupportErrorInfo, support.untyped_receiver()), S_OK);
  ASSERT_EQ(support->QueryInterface(IID_IUnknown, by_support.untyped_receiver()), S_OK);
  ASSERT_EQ(crm->QueryInterface(IID_IProvideClassInfo, class_info.untyped_receiver()), S_OK);
  ASSERT_EQ(class_info->QueryInterface(IID_IUnknown, by_class_info.untyped_receiver()), S_OK);
  EXPECT_EQ(identity.get(), by_name.get());
  EXPECT_EQ(identity.get(), by_support.get());
  EXPECT_EQ(identity.get(), by_class_info.get());

  Reference<ITypeInfo> type;
  Text name;
  ASSERT_EQ(class_info->GetClassInfo(type.receiver()), S_OK);
  type->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  EXPECT_EQ(name.utf8(), "CRM");
}

TEST(Creation, FailsWithTheReasonOfTheClass) {
  auto& application = *page().application.get();
  application.set_text(L"dataconn_ConnectionTimeout", L"quinze");
  HRESULT outcome = S_OK;
  const Reference<_CRM> none = create<_CRM>(L"Pradelis.CRM", &outcome);
  application.set_text(L"dataconn_ConnectionTimeout", L"15");
  EXPECT_FALSE(none);
  EXPECT_EQ(outcome, com::code_of(13));
  EXPECT_TRUE(create_crm());
}

}  // namespace
}  // namespace pradelis::test
