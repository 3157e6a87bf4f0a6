<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
Dim estado, vendedor, selecao, valor, total, quantos

' O dia previsto de um negócio aberto, senão o que foi feito dele.
Function Situacao()
  If IsNull(crm.rs("dataprovavel").Value) Then
    Situacao = crm.Negocio_Status(crm.rs("oid"))
  Else
    Situacao = Dia(crm.Fechamento_Previsto(crm.rs("fechamento"), crm.rs("dataprovavel"), crm.rs("rmotivo")))
  End If
End Function

ExigirEntrada
estado = Parametro("estado")
vendedor = Identificador(Parametro("vendedor"))
' Ninguém vê mais por escrever outro número no endereço.
If Not crm.VerificaSubordinado(vendedor) Then vendedor = 0

' O comando que seleciona os negócios que o vendedor pode ver, para dentro da consulta desta página.
selecao = crm.String_Negocio_Vendedor(vendedor, Null, estado = "" Or estado = "aberto", _
  estado = "fechado", estado = "perdido")
crm.Executar "select n.oid, i.nome, c.nome as empresa, n.rpessoa, v.nome as vendedor, n.dataprovavel," & _
  " n.valorprovavel, n.fechamento, n.rmotivo" & _
  " from crm_pos_negocio n join item_r i on i.oid = n.oid" & _
  " left join item c on c.oid = n.rpessoa left join item v on v.oid = n.rvendedor" & _
  " where n.oid in (" & selecao & ") order by n.dataprovavel, i.nome, n.oid"

Inicio "Negócios"
total = 0
quantos = 0
%>
<p>
<a href="negocios.asp?estado=aberto">Abertos</a>
<a href="negocios.asp?estado=fechado">Fechados</a>
<a href="negocios.asp?estado=perdido">Perdidos</a>
</p>
<table>
<tr><th>Negócio</th><th>Empresa</th><th>Vendedor</th><th>Situação</th><th>Aberto há</th><th class="numero">Valor</th></tr>
<%
Do While Not crm.rs.EOF
  valor = crm.rs("valorprovavel").Value
  If Not IsNull(valor) Then total = total + valor
  quantos = quantos + 1
%><tr>
<td><%= H(crm.rs("nome")) %></td>
<td><a href="empresa.asp?oid=<%= crm.rs("rpessoa") %>"><%= H(crm.rs("empresa")) %></a></td>
<td><%= H(crm.rs("vendedor")) %></td>
<td><%= H(Situacao()) %></td>
<td><%= H(crm.Diadecorrido(crm.rs("oid"))) %></td>
<td class="numero"><%= Dinheiro(valor) %></td>
</tr>
<%
  crm.rs.MoveNext
Loop
crm.rs.Close
%><tr><th colspan="5"><%= quantos %> negócios</th><th class="numero"><%= Dinheiro(total) %></th></tr>
</table>
<% Fim %>
