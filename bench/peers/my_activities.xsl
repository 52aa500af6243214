<?xml version="1.0" encoding="UTF-8"?>
<!-- Prints the list that MyActivities returns.

     xsltproc -stringparam mapper FIELD_MAPPER my_activities.xsl STORE -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text" encoding="UTF-8"/>
  <xsl:param name="mapper"/>

  <xsl:variable name="fields" select="document($mapper)"/>
  <xsl:variable name="columns"
                select="$fields/*/ccsocservcactv/*[@UINTERFACE='1' or @UINTERFACE='3']"/>
  <xsl:variable name="columnCount" select="count($columns)"/>
  <xsl:variable name="codes" select="$fields//*[*/@Id]"/>
  <xsl:variable name="widths">&lt;COL WIDTH=120> &lt;COL WIDTH=120>&lt;COL WIDTH=150> &lt;COL WIDTH=150>&lt;COL WIDTH=120> &lt;COL WIDTH=120> &lt;COL WIDTH=120></xsl:variable>

  <xsl:key name="order" match="ccsocservcordr/record" use="@ServiceOrder"/>

  <xsl:template match="/">
    <xsl:call-template name="header"/>
    <xsl:for-each select="*/ccsocservcactv/*[key('order', @ID)[1]/*[1] = '15']">
      <xsl:text>&lt;tr class=orderrow>&lt;td colspan=</xsl:text>
      <xsl:value-of select="$columnCount"/>
      <xsl:text>>&amp;nbsp;</xsl:text>
      <xsl:call-template name="link">
        <xsl:with-param name="kind" select="1"/>
        <xsl:with-param name="order" select="@ID"/>
        <xsl:with-param name="text" select="@ID"/>
      </xsl:call-template>
      <xsl:text>&lt;/td>&lt;/tr></xsl:text>
      <xsl:apply-templates select="*"/>
    </xsl:for-each>
    <xsl:text>&lt;/table>&lt;/div>&lt;/td>&lt;/tr>&lt;/table>&#10;</xsl:text>
  </xsl:template>

  <xsl:template name="header">
    <xsl:text>&lt;table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>&lt;tr>&lt;td width=100%></xsl:text>
    <xsl:text>&lt;table width=100% border=0 cellspacing=2 cellpadding=0></xsl:text>
    <xsl:text>&lt;tr class=titles>&lt;td nowrap  valign=bottom width=100%> &amp;nbsp;&lt;strong></xsl:text>
    <xsl:value-of select="$fields//I18N/*[@ID='SLBEU0232']/@DESCRIPTION"/>
    <xsl:text>&lt;/strong>&lt;/td>&lt;td valign=bottom align=right></xsl:text>
    <xsl:text>&lt;input type=submit  onclick=javascript:winclose("divList") value=" x "></xsl:text>
    <xsl:text>&lt;/td>&lt;/tr>&lt;/table>&lt;/td>&lt;/tr>&lt;tr>&lt;td width=100%></xsl:text>
    <xsl:text>&lt;table border=0 cellspacing=2 cellpadding=0 width=100%  height=25></xsl:text>
    <xsl:value-of select="$widths"/>
    <xsl:text>&lt;tr></xsl:text>
    <xsl:for-each select="$columns">
      <xsl:value-of select="concat('&lt;td class=tableheader nowrap>', @LABEL, '&lt;/td>')"/>
    </xsl:for-each>
    <xsl:text>&lt;/tr>&lt;/table>&lt;div style="height:125; overflow:auto;"></xsl:text>
    <xsl:text>&lt;table border=0 cellspacing=2 cellpadding=0 width=100%  height=300></xsl:text>
    <xsl:value-of select="$widths"/>
  </xsl:template>

  <xsl:template name="link">
    <xsl:param name="kind"/>
    <xsl:param name="order"/>
    <xsl:param name="activity"/>
    <xsl:param name="text"/>
    <xsl:value-of select="concat('&lt;span id=', $order, ' class=links onclick=javascript:showdetails(&quot;',
                                 $kind, '&quot;,&quot;', $order, '&quot;,&quot;', $activity)"/>
    <xsl:value-of select="concat('&quot;,&quot;&quot;,&quot;2&quot;)>', $text, '&lt;/span>')"/>
  </xsl:template>

  <xsl:template match="ccsocservcactv/*/*">
    <xsl:text>&lt;tr class=tablerows>&lt;td>&lt;/td>&lt;td>&amp;nbsp;</xsl:text>
    <xsl:call-template name="link">
      <xsl:with-param name="kind" select="2"/>
      <xsl:with-param name="order" select="../@ID"/>
      <xsl:with-param name="activity" select="@Activity"/>
      <xsl:with-param name="text" select="@Activity"/>
    </xsl:call-template>
    <xsl:text>&lt;/td></xsl:text>
    <xsl:apply-templates select="*"/>
    <xsl:text>&lt;/tr></xsl:text>
  </xsl:template>

  <xsl:template match="ccsocservcactv/*/*/*">
    <xsl:variable name="name" select="name()"/>
    <xsl:variable name="column" select="$columns[name() = $name][1]"/>
    <xsl:choose>
      <xsl:when test="not($column)"/>
      <xsl:when test="$column/@DATATYPE = 'e'">
        <xsl:variable name="code" select="string()"/>
        <xsl:value-of select="concat('&lt;td>&amp;nbsp;', $codes[name() = $name][1]/*[@Id = $code]/@Value, '&lt;/td>')"/>
      </xsl:when>
      <xsl:when test="$column/@HYPERLINK = 'True'">
        <xsl:value-of select="concat('&lt;td align=center>&amp;nbsp;&lt;a href=javascript:hyperlink(&quot;', $name,
                                     '&quot;,&quot;', ., '&quot;,&quot;order&quot;)>', ., '&lt;/a>&lt;/td>')"/>
      </xsl:when>
      <xsl:when test="$column/@DATATYPE = 'u' and string()">
        <xsl:value-of select="concat('&lt;td align=center>&amp;nbsp;', substring(., 5, 2), '/', substring(., 7, 2), '/',
                                     substring(., 1, 4), ' ', substring(., 10, 4), '&lt;/td>')"/>
      </xsl:when>
      <xsl:otherwise>
        <xsl:value-of select="concat('&lt;td align=center>&amp;nbsp;', ., '&lt;/td>')"/>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
