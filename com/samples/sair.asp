<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
ExigirEntrada
If Recebido() Then
  If Not IsEmpty(usuario(6)) Then crm.Finalizar_Sessao_Uso usuario(6)
  Session.Abandon
End If
Response.Redirect "entrar.asp"
%>
