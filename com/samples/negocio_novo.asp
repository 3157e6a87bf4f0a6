<%@ Language="VBScript" CodePage="65001" %><% Option Explicit %>
<!--#include file="crm.inc"-->
<%
Dim empresa, nome, previsto, valor, observacao, classes, feito, falha, empresas

' Registra o negócio; o resultado é o número dele, ou a mensagem que diz por que não foi registrado.
Sub Registrar()
  Dim resultado, passo, classe
  On Error Resume Next
  resultado = crm.Cadastrar_Negocio(empresa, 0, usuario(0), previsto, classes, 0, observacao, nome, _
    crm.FormataNumero((valor)), passo)
  If Err.Number <> 0 Then
    falha = Err.Description & " (passo " & passo & ")"
  ElseIf IsNumeric(resultado) Then
    feito = resultado
  Else
    falha = resultado
  End If
  On Error GoTo 0
End Sub

ExigirEntrada
empresas = "select oid, nome from pessoajuridica_r where oid in (" & crm.String_Empresa_Vendedor() & ")"
empresa = Identificador(Campo("empresa"))
nome = Campo("nome")
previsto = Campo("previsto")
valor = Campo("valor")
observacao = Campo("observacao")
classes = Identificadores(Request.Form("classe"))

If Recebido() Then
  crm.Executar empresas & " and oid = " & empresa
  If crm.rs.EOF Then
    falha = "Escolha a empresa."
  ElseIf nome = "" Then
    falha = "Dê um nome ao negócio."
  Else
    Registrar
  End If
End If

Inicio "Novo negócio"
Aviso falha
If feito <> "" Then
%><p role="status">O negócio “<%= H(nome) %>” foi registrado sob o número <%= feito %>. <a href="negocios.asp">Ver os negócios</a></p>
<%
End If
%><form method="post" action="negocio_novo.asp">
<p><label>Empresa <select name="empresa" required><% Opcoes empresas & " order by nome, oid", empresa %>
</select></label></p>
<p><label>Nome <input name="nome" value="<%= H(nome) %>" maxlength="255" required></label></p>
<p><label>Fechamento previsto <input name="previsto" value="<%= H(previsto) %>" onkeyup="Data_Tecla_Pressionada(this)" onblur="Data_Perdeu_foco(this,false)"></label></p>
<p><label>Valor previsto <input name="valor" value="<%= H(valor) %>" onblur="ChecaNumero(this)"></label></p>
<fieldset><legend>Classes de produtos</legend>
<%
crm.Executar "select oid, nome from categoria_r where rsuper = 2203 order by nome, oid"
Do While Not crm.rs.EOF
%><label><input type="checkbox" name="classe" value="<%= crm.rs("oid") %>"<% If InStr("," & classes & ",", "," & crm.rs("oid") & ",") > 0 Then Response.Write " checked" %>> <%= H(crm.rs("nome")) %></label>
<%
  crm.rs.MoveNext
Loop
%></fieldset>
<p><label>Observação <textarea name="observacao"><%= H(observacao) %></textarea></label></p>
<p><button>Registrar</button></p>
</form>
<% Fim %>
