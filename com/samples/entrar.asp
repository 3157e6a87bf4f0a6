<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
Dim login, falha

Sub Entrar()
  Dim senha, vendedor, quem, erro
  AbrirCRM
  login = Campo("usuario")
  senha = Request.Form("senha") & ""
  ' Quem não tem uma senha de vendedor à parte foi cadastrado com a sua própria, codificada.
  vendedor = Request.Form("senha_vendedor") & ""
  If vendedor = "" Then vendedor = crm.QLCBase.CodificarSenha(UCase(login) & senha, 11)

  On Error Resume Next
  crm.Logar crm.PrepararVariavel(login), senha, quem, Variavel("REMOTE_ADDR"), True, crm.PrepararVariavel(vendedor)
  erro = Err.Number
  If erro <> 0 Then falha = Err.Description
  On Error GoTo 0

  If erro = 0 Then
    If IsEmpty(quem(8)) Then falha = "Há mais de uma pessoa com este usuário."
  End If
  If falha <> "" Then
    ' Uma recusa depois da senha certa deixa uma sessão de uso aberta.
    If IsArray(quem) Then
      If Not IsEmpty(quem(6)) Then crm.Finalizar_Sessao_Uso quem(6)
    End If
    Exit Sub
  End If

  quem(4) = crm.cGrupoUsuarios.fUsuariosVisiveis(quem(0))
  Session("InformacoesUsuario") = quem
  Response.Redirect "negocios.asp"
End Sub

If Recebido() Then Entrar
Inicio "Entrar"
Aviso falha
%>
<form method="post" action="entrar.asp">
<p><label>Usuário <input name="usuario" value="<%= H(login) %>" autocomplete="username" required autofocus></label></p>
<p><label>Senha <input name="senha" type="password" autocomplete="current-password" required></label></p>
<p><label>Senha de vendedor, se for outra <input name="senha_vendedor" type="password" autocomplete="off"></label></p>
<p><button>Entrar</button></p>
</form>
<% Fim %>
