#include "tests/com/windows/visit.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "com/error_info.h"
#include "tests/com/windows/late_bound.h"
#include "tests/com/windows/page.h"

namespace pradelis::test {
namespace {

constexpr std::string_view cities = "select oid, nome, cid from item_r where cid = 19 order by nome";

HRESULT execute(_CRM& crm, std::string_view statement) {
  Value sql(statement);
  Value result;
  CursorTypeEnum cursor = adOpenStatic;
  LockTypeEnum lock = adLockReadOnly;
  CursorLocationEnum location = adUseServer;
  LONG limit = 0;
  return crm.Executar(&sql, &cursor, &lock, &location, &limit, &result);
}

/// Gives the number of fields that an enumeration of them has.
int enumerated(IDispatch* fields) {
  Value enumerator;
  DISPPARAMS none{};
  if (FAILED(fields->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &enumerator, nullptr,
                            nullptr)))
    return -1;
  com::Reference<IEnumVARIANT> elements;
  enumerator.punkVal->QueryInterface(IID_IEnumVARIANT, elements.untyped_receiver());
  int count = 0;
  for (;;) {
    Value element;
    ULONG fetched = 0;
    if (elements->Next(1, &element, &fetched) != S_OK) return count;
    ++count;
  }
}

void walk(IDispatch* rows) {
  Value fields;
  ASSERT_EQ(read(rows, L"Fields", {}, &fields), S_OK);
  EXPECT_EQ(enumerated(fields.pdispVal), 3);
  int count = 0;
  for (;; ++count) {
    Value at_end;
    ASSERT_EQ(read(rows, L"EOF", {}, &at_end), S_OK);
    if (at_end.boolVal == VARIANT_TRUE) break;
    Value name;
    Value city;
    Value text;
    ASSERT_EQ(read(rows, L"", {Value("nome")}, &city), S_OK);
    ASSERT_EQ(city.vt, VT_DISPATCH);
    EXPECT_EQ(read(city.pdispVal, L"", {}, &text), S_OK);
    EXPECT_EQ(read(city.pdispVal, L"Name", {}, &name), S_OK);
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_EQ(name.text(), "nome");
    Value nothing;
    ASSERT_EQ(read(rows, L"MoveNext", {}, &nothing), S_OK);
  }
  EXPECT_EQ(count, 22);
  Value nothing;
  Value table;
  EXPECT_EQ(read(rows, L"MoveFirst", {}, &nothing), S_OK);
  EXPECT_EQ(read(rows, L"GetRows", {}, &table), S_OK);
  EXPECT_EQ(table.vt, VT_ARRAY | VT_VARIANT);
}

void call_methods(_CRM& crm) {
  Value typed("1.234,56");
  Value number;
  EXPECT_EQ(crm.FormataNumero(&typed, &number), S_OK);
  EXPECT_EQ(typed.text(), "1234,56");
  Value wrong("abc");
  EXPECT_EQ(crm.FormataOid(&wrong, &number), com::code_of(13));
  Value quoted("D'Ávila 😀");
  Value again;
  EXPECT_EQ(read(&crm, L"PrepararVariavel", {quoted.reference()}, &again), S_OK);
  EXPECT_EQ(again.text(), "D''Ávila 😀");
  EXPECT_EQ(read(&crm, L"FormataOid", {Value("abc")}, &again), com::code_of(13));
  EXPECT_EQ(crm.put_sValor(Value("guardado")), S_OK);
}

}  // namespace

void connect(PageObjects& page) {
  const char* connection = std::getenv("PRADELIS_TEST_CONNECTION");
  ASSERT_NE(connection, nullptr) << "tests/com/run_on_database sets it";
  page.application->set_text(L"dataconn_ConnectionTimeout", L"15");
  page.application->set_text(L"dataconn_CommandTimeout", L"30");
  page.application->set_text(L"dataconn_ConnectionString", com::to_utf16(connection));
  page.application->set_text(L"Link_local", L"/crm");
}

void visit(PageObjects& page) {
  const com::Reference<_CRM> crm = create_crm();
  ASSERT_TRUE(crm);
  call_methods(*crm.get());
  ASSERT_EQ(execute(*crm.get(), cities), S_OK);
  com::Reference<IDispatch> rows;
  ASSERT_EQ(crm->get_rs(rows.receiver()), S_OK);
  walk(rows.get());
  EXPECT_NE(execute(*crm.get(), "select nada from coisa_nenhuma"), S_OK);
  SetErrorInfo(0, nullptr);  // the thread keeps the last one

  page.response->text.clear();
  com::Reference<_PessoaJuridica> categories;
  Text none;
  ASSERT_EQ(crm->get_cPessoaJuridica(categories.receiver()), S_OK);
  EXPECT_EQ(categories->Montar_Arv_Classif(Text("categoria"), 10, Value(""), &none), S_OK);
  EXPECT_TRUE(page.response->text.starts_with(L"<font color"));
}

}  // namespace pradelis::test
