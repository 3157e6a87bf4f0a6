<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
Dim categorias

ExigirEntrada
categorias = Identificadores(Request.QueryString("categoria"))
Inicio "Empresas por categoria"
%>
<form method="get" action="categorias.asp">
<% crm.cPessoaJuridica.Montar_Arv_Classif "categoria", 10, categorias %>
<p><button>Mostrar as empresas</button></p>
</form>
<%
If categorias <> "" Then
  crm.Executar "select distinct j.oid, j.nome from pessoajuridica_r j join classificacao k on k.ritem = j.oid" & _
    " where k.rcategoria in (" & categorias & ") and j.oid in (" & crm.String_Empresa_Vendedor() & ")" & _
    " order by j.nome, j.oid"
%><ul>
<%
  Do While Not crm.rs.EOF
%><li><a href="empresa.asp?oid=<%= crm.rs("oid") %>"><%= H(crm.rs("nome")) %></a></li>
<%
    crm.rs.MoveNext
  Loop
%></ul>
<%
End If
Fim
%>
