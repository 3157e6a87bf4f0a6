' The four classes as a script meets them, on a database with a demonstration.

Dim crm, groups, companies, salespeople, base, info, deal, company, person, salesperson_password

Begin "creation"
Set crm = CreateObject("Pradelis.CRM")
Set groups = CreateObject("Pradelis.GrupoUsuarios")
Set companies = CreateObject("Pradelis.PessoaJuridica")
Set salespeople = CreateObject("Pradelis.Vendedor")
Set base = crm.QLCBase
Expect "type of a class", TypeName(crm), "_CRM"
Expect "nothing in a slot", crm.rs Is Nothing, True
Expect "a child stays the same", crm.cGrupoUsuarios Is crm.cGrupoUsuarios, True
Expect "switch at creation", crm.PValorNegocio, CByte(1)
crm.sValor = "1, 2"
Expect "value slot", crm.svalor, "1, 2"

Begin "login"
salesperson_password = base.CodificarSenha(UCase(login) & password, 11)
Expect "logged in", crm.Logar(LCase(login), password, info, "estação 1", True, salesperson_password), True
Expect "elements", UBound(info), 11
Expect "account", info(3), UCase(login)
Expect "visible users are the page's", info(4), Empty
Expect "time of login", VarType(info(5)), vbDate
Expect "session", VarType(info(6)), vbLong
person = info(0)
Expect "session ended", crm.Finalizar_Sessao_Uso(info(6)), True

On Error Resume Next
crm.Logar login, password & "x", info
ExpectError "wrong password", 1001, "Pradelis.CRM.Logar", "Usuário ou senha inválidos!"
Expect "array of a failed login", UBound(info), 11
crm.Logar login, password, info, "", False, "outra"
ExpectError "unknown salesperson", 1001, "Pradelis.CRM.Logar", _
  "Não existe esse vendedor cadastrado no sistema de usuários!"
On Error GoTo 0

Begin "written arguments"
Dim number, text, upper_limit, statement
number = "1.234,50"
Expect "number", crm.FormataNumero(number), 1234.5
Expect "its text", number, "1234,50"
text = "1234.5"
Expect "formatted", crm.converte(text), "1.234,50"
Expect "formatted argument", text, "1.234,50"
number = 3000
Expect "size", crm.Escrever_Tamanho_Arquivo(number), "2,930KBytes"
Expect "size's argument", number, "2,930K"
text = "D'Ávila"
Expect "doubled quotes", crm.PrepararVariavel(text), "D''Ávila"
Expect "argument that is only read", text, "D'Ávila"
number = 12
Expect "an expression is no variable", crm.FormataNumero((number)), 12.0
Expect "so it stays", number, 12
Expect "omitted optional argument", Len(crm.DataAgora()), 19
Expect "given optional argument", Len(crm.DataAgora(False)), 10

Begin "deals"
crm.Executar2 "select min(oid) as oid from pessoajuridica_r"
company = CLng(crm.rs2("oid"))
Dim step_reached, expected_date
expected_date = "31/12/2030"
step_reached = 0
deal = crm.Cadastrar_Negocio(company, 0, person, expected_date, "", 0, "observação", "Negócio d'água", 1234.5, _
  step_reached)
Expect "identifier", VarType(deal), vbLong
Expect "step", step_reached, 5
Expect "open", crm.Negocio_Status(deal), "Aberto"
Expect "same name", crm.Cadastrar_Negocio(company, 0, person, "", "", 0, "", "Negócio d'água", 1), _
  "Já existe um Negócio dessa Empresa com esse Nome"
Expect "closed", crm.Fechar_Negocio(CDate("2026-03-05"), deal), "0"
Expect "state of the closed", crm.Negocio_Status(deal), "Fechado"
Expect "reopened", crm.Estornar_Negocio(deal), "0"
Expect "state of the reopened", crm.Negocio_Status(CStr(deal)), "Aberto"
Expect "unknown deal", crm.Negocio_Status(1), "NEGÓCIO INEXISTENTE"
Expect "age", crm.Diadecorrido(deal), "0 Dias"

Expect "lost", crm.Perder_Negocio(Date, 7, "não quis", deal), "0"
Expect "state of the lost", crm.Negocio_Status(deal), "Perdido"
Expect "reopened again", crm.Estornar_Negocio(deal), "0"

Begin "objects of the library"
Dim changed, nothing_read
Expect "date as text", crm.QLCData.DataParaTexto(CDate("2026-03-05"), 0, 0), "05/03/2026"
Expect "connection's time-out", CLng(crm.QLCConn.ConnectionTimeout), 15
Set nothing_read = crm.QLCConn.Conexao.Execute("update item set observacao = 'x' where oid = " & deal, changed)
Expect "rows changed", CLng(changed), 1
Expect "without rows", nothing_read.State, 0

Begin "recordsets"
Dim rows, field, names, count, matrix
Expect "query", crm.Executar("select i.oid, i.nome, n.valorprovavel, n.dataprovavel, n.fechamento, i.observacao " & _
  "from item i, crm_pos_negocio n where i.oid = n.oid and i.oid = " & deal), "0"
Set rows = crm.rs
Expect "state", rows.State, 1
Expect "at the end", rows.EOF, False
Expect "count of fields", rows.Fields.Count, 6
Expect "by name", rows("NOME") & "", "Negócio d'água"
Expect "as a value", CStr(rows("oid")), CStr(deal)
Expect "by position", rows(2).Value, 1234.5
Expect "date", rows.Fields("dataprovavel").Value, CDate("2030-12-31")
Expect "null", rows.Fields.Item("fechamento").Value, Null
Expect "name of a field", LCase(rows.Fields(1).Name), "nome"
names = ""
For Each field In rows.Fields
  names = names & LCase(field.Name) & " "
Next
Expect "each field", names, "oid nome valorprovavel dataprovavel fechamento observacao "
rows.MoveNext
Expect "past the row", rows.EOF, True
rows.Close
Expect "closed", rows.State, 0

crm.Executar2 "select 1 as a, 'x' as b union all select 2, 'y' union all select 3, 'ç' order by 1"
Expect "number of rows", crm.rs2.RecordCount, 3
count = 0
Do While Not crm.rs2.EOF
  count = count + crm.rs2("a")
  crm.rs2.MoveNext
Loop
Expect "walked", CLng(count), 6
crm.rs2.MoveFirst
matrix = crm.rs2.GetRows
Expect "columns", UBound(matrix, 1), 1
Expect "rows", UBound(matrix, 2), 2
Expect "cell", matrix(1, 2), "ç"
crm.rs2.MoveFirst
matrix = crm.rs2.GetRows(2, 0, Array("b", "a"))
Expect "chosen columns", matrix(0, 0) & UBound(matrix, 2), "x1"

Begin "changes through a recordset"
crm.Executar3 "select oid, nome, observacao from item where oid = " & deal, 2, 3
crm.rs3("observacao") = "mudada, 10 €"
crm.rs3.Update
crm.rs3.Close
crm.Executar3 "select observacao from item where oid = " & deal
Expect "changed", crm.rs3("observacao").Value, "mudada, 10 €"
crm.Executar3 "select * from crm_classeprodutos_negocio where rnegocio = " & deal, 2, 3
crm.rs3.AddNew
crm.rs3("rnegocio") = deal
crm.rs3("rclasseproduto") = 7
crm.rs3.Update
crm.rs3.Close
crm.Executar3 "select * from crm_classeprodutos_negocio where rnegocio = " & deal, 2, 3
Expect "added", CLng(crm.rs3("rclasseproduto")), 7
crm.rs3.Delete
crm.rs3.Close
crm.Executar3 "select * from crm_classeprodutos_negocio where rnegocio = " & deal
Expect "deleted", crm.rs3.EOF, True

Begin "bytes"
Dim bytes
crm.Executar6 "select dado from crm_arquivo order by id"
bytes = crm.rs6("dado").Value
Expect "bytes", VarType(bytes), vbArray + vbByte
Expect "attached", crm.Adicionar_Arquivo(bytes, "cópia.txt", person, "", deal), 0
crm.Executar6 "select nome from crm_arquivo where ritem = " & deal
Expect "name", crm.rs6("nome").Value, "cópia.txt"
crm.Executar6 "select count(*) as n from crm_arquivo a, crm_arquivo b where a.id < b.id and a.dado = b.dado " & _
  "and b.ritem = " & deal
Expect "the same bytes", CLng(crm.rs6("n")) > 0, True

Begin "errors"
On Error Resume Next
crm.Executar "select * from"
ExpectError "wrong statement", -2147217900, "Pradelis.CRM.Executar", "*"
Expect "its slot is empty", crm.rs Is Nothing, True
crm.Fechar_Negocio Date, 1
ExpectError "no current row", 3021, "Pradelis.CRM.Fechar_Negocio", "*"
crm.Negocio_Status "doze"
ExpectError "no number", 13, "", "*"
number = crm.rs3("observacao")
ExpectError "no such field", 3265, "", "*"
number = crm.rs3.EOF
Expect "an error is over", Err.Number, 0
crm.rs2.Close
Expect "closed once", Err.Number, 0
number = crm.rs2.EOF
ExpectError "closed recordset", 3704, "", "*"
crm.NaoExiste
Expect "unknown method", Err.Number, 438
Err.Clear
groups.fUsuariosGRP "abc"
ExpectError "failure of another class", Err.Number, "Pradelis.GrupoUsuarios.fUsuariosGRP", "*"
On Error GoTo 0

Begin "groups and trees"
Dim visible
visible = groups.fUsuariosVisiveis(person)
Expect "a user sees himself last", Right(visible, Len(CStr(person))), CStr(person)
info(4) = visible
SetSession "InformacoesUsuario", info
Expect "subordinate", crm.VerificaSubordinado(person), True
statement = crm.String_Negocio_Vendedor(0, company)
Expect "list of users", crm.sValor, visible
crm.Executar statement
count = 0
Do While Not crm.rs.EOF
  If CLng(crm.rs("oid")) = deal Then count = count + 1
  crm.rs.MoveNext
Loop
Expect "the deal is visible", count, 1
Written
salespeople.Montar_Arv_Vendedor "v", person, "Ana", 10
Expect "tree in the page", InStr(Written(), "Ana") > 0, True
companies.Montar_Arv_Classif "c", 10, "46"
Expect "images from where the application says", InStr(Written(), "/crm") > 0, True

Begin "a login of this side"
Dim new_login, new_person, message, group
crm.Executar "select min(oid) as oid from item_r where cid = 18"
group = CStr(crm.rs("oid"))
crm.Executar "select min(oid) as oid from cidade"
new_login = "estêvão"
Expect "registered", crm.Cadastrar_Vendedor("Estêvão d'Ávila", "Rua", "1", "", "Bairro", "13000-000", _
  CLng(crm.rs("oid")), group, new_login, "çenha 2026", 7, new_person, message), True
Expect "login in upper case", new_login, "ESTÊVÃO"
Expect "person", VarType(new_person), vbLong
crm.Executar "select * from vendedocad where codvend = 0", 2, 3
crm.rs.AddNew
crm.rs("codvend") = 9000
crm.rs("nome") = "Estêvão"
crm.rs("rpessoa") = new_person
crm.rs("senhaven") = base.CodificarSenha(new_login & "çenha 2026", 11)
crm.rs.Update
Expect "logs in", crm.Logar("Estêvão", "çenha 2026", info, "", False, _
  base.CodificarSenha(new_login & "çenha 2026", 11)), True
Expect "salesperson", CLng(info(7)), 9000

Finish
