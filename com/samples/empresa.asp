<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
Const classe_empresa = 46 ' de que registros são os campos extras deste formulário
Dim empresa, feito, falha

' Os dados da empresa e o seu primeiro endereço, abertos em rs.
Sub LerEmpresa()
  crm.Executar "select j.nome, p.razaosocial, j.observacao, e.rua, e.numero, e.complemento, e.bairro, e.cep, e.rcidade" & _
    " from pessoajuridica_r j join pessoa p on p.oid = j.oid" & _
    " left join endereco e on e.oid = (select min(oid) from endereco where ritem = j.oid)" & _
    " where j.oid = " & empresa & " and j.oid in (" & crm.String_Empresa_Vendedor() & ")"
End Sub

' Grava os campos extras que Aditivo_Escrever_Item pôs no formulário.
Sub GravarCamposExtras()
  Dim n, campo_extra, valor
  For n = 1 To Identificador(Campo("ADITIVO_TOTAL"))
    campo_extra = Identificador(Campo("ADITIVO_DEFINICAO" & n))
    valor = Campo("ADITIVO_VALOR" & n)
    crm.Executar2 "select rtipo from dadoadicional where visivel = 1 and ritem = " & classe_empresa & _
      " and oid = " & campo_extra
    If Not crm.rs2.EOF Then
      ' O número de uma referência vai para dentro de um comando; os outros valores são convertidos.
      If crm.rs2("rtipo").Value = 2 Then valor = Identificador(valor)
      If valor & "" = "" Then valor = Null
      crm.Alterar_Aditivo empresa, campo_extra, valor
    End If
  Next
End Sub

Sub Gravar()
  On Error Resume Next
  crm.Alterar_Empresa empresa, Campo("razaosocial"), usuario(0), Campo("observacao"), Campo("nome"), _
    Identificador(Campo("cidade")), Campo("cep"), Campo("bairro"), Campo("complemento"), Campo("numero"), Campo("rua")
  If Err.Number = 0 Then GravarCamposExtras
  If Err.Number <> 0 Then falha = Err.Description
  On Error GoTo 0
  If falha = "" Then feito = "Gravado."
End Sub

ExigirEntrada
empresa = Identificador(Parametro("oid"))
LerEmpresa
If crm.rs.EOF Then
  Response.Status = "404 Not Found"
  Inicio "Esta empresa não existe"
  Fim
  Response.End
End If
If Recebido() Then
  Gravar
  LerEmpresa
End If

Inicio crm.rs("nome")
Aviso falha
If feito <> "" Then
%><p role="status"><%= feito %></p>
<%
End If
%><form method="post" action="empresa.asp?oid=<%= empresa %>">
<p><label>Nome <input name="nome" value="<%= H(crm.rs("nome")) %>" maxlength="255" required></label></p>
<p><label>Razão social <input name="razaosocial" value="<%= H(crm.rs("razaosocial")) %>" maxlength="255"></label></p>
<p><label>Rua <input name="rua" value="<%= H(crm.rs("rua")) %>"></label>
<label>Número <input name="numero" value="<%= H(crm.rs("numero")) %>" size="6"></label>
<label>Complemento <input name="complemento" value="<%= H(crm.rs("complemento")) %>"></label></p>
<p><label>Bairro <input name="bairro" value="<%= H(crm.rs("bairro")) %>"></label>
<label>CEP <input name="cep" value="<%= H(crm.rs("cep")) %>" size="9"></label>
<label>Cidade <select name="cidade"><% Opcoes "select oid, nome from item_r where cid = 19 order by nome, oid", crm.rs("rcidade").Value %>
</select></label></p>
<p><label>Observação <textarea name="observacao"><%= H(crm.rs("observacao")) %></textarea></label></p>
<h2>Campos extras</h2>
<% crm.Aditivo_Escrever_Item classe_empresa, 1, empresa, "class=""extra""" %>
<p><button>Gravar</button></p>
</form>
<% Fim %>
