<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
ExigirEntrada
Inicio "Vendedores"
%>
<form method="get" action="negocios.asp">
<% crm.cVendedor.Montar_Arv_Vendedor "vendedor", usuario(0), H(usuario(1)), 5 %>
<p><button>Mostrar os negócios</button></p>
</form>
<% Fim %>
