@echo off
rem Registra a biblioteca desta pasta. Com /s nada espera por uma tecla.
setlocal
chcp 850 >nul
set biblioteca=%~dp0pradelis.dll
set sistema=%SystemRoot%\System32
rem Um programa de 32 bits vê o outro System32.
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set sistema=%SystemRoot%\Sysnative

if not exist "%biblioteca%" (
  echo Não encontrei %biblioteca%.
  echo Descompacte o pacote inteiro na pasta em que a biblioteca vai ficar e execute este arquivo de lá.
  goto falha
)
"%sistema%\regsvr32.exe" /s "%biblioteca%"
if errorlevel 1 (
  echo A biblioteca não pôde ser registrada.
  echo Ela é para Windows de 64 bits. Se a pasta veio da rede, copie-a antes para um disco deste computador.
  goto falha
)
reg query "HKLM\Software\Classes\Pradelis.CRM" >nul 2>nul
if errorlevel 1 (
  echo Registrada em %biblioteca%, mas só para o seu usuário.
  echo As páginas do IIS usam outro usuário: para elas, execute este arquivo como administrador.
) else (
  echo Registrada em %biblioteca%, para todos os usuários deste computador.
)
echo Não mova a pasta depois disto. O arquivo INSTALACAO.md diz o que falta: ODBC, o pool do IIS e as variáveis da aplicação.
if not "%~1"=="/s" pause
exit /b 0

:falha
if not "%~1"=="/s" pause
exit /b 1
