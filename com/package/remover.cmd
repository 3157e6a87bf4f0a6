@echo off
rem Retira o registro da biblioteca desta pasta. Com /s nada espera por uma tecla.
setlocal
chcp 850 >nul
set biblioteca=%~dp0pradelis.dll
set sistema=%SystemRoot%\System32
rem Um programa de 32 bits vê o outro System32.
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set sistema=%SystemRoot%\Sysnative

if not exist "%biblioteca%" (
  echo Não encontrei %biblioteca%.
  goto falha
)
"%sistema%\regsvr32.exe" /u /s "%biblioteca%"
if errorlevel 1 (
  echo O registro não pôde ser retirado. Execute este arquivo como administrador.
  goto falha
)
echo O registro foi retirado. A pasta pode ser apagada; se o Windows disser que ela está em uso, pare antes o
echo pool do IIS que usa a biblioteca.
if not "%~1"=="/s" pause
exit /b 0

:falha
if not "%~1"=="/s" pause
exit /b 1
